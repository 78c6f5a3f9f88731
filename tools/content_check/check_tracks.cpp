#include "content_check/checks.h"
#include "content_check/report.h"
#include "race/headless_race.h"
#include "render/picture_size.h"
#include "world/track_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace {

constexpr int LAPS = 3;
constexpr double TIME_LIMIT_S = 400.0;     // simulated, for three laps
constexpr double MAX_STUCK_S = 10.0;       // simulated
constexpr int MAX_PICTURE_SIDE = 8192;     // some GPUs take no larger texture
constexpr double MAX_PICTURE_RATIO = 1.75; // five thumbnails share a row of the menu
constexpr int MIN_GRID_SIDE = 321; // larger grids are drawn at one pixel a cell, in full detail

std::string slot_name(int slot, std::string const& path) {
    return path.empty() ? "slot " + std::to_string(slot) : path;
}

void race_track(Report& report, std::string const& path, Track track) {
    HeadlessRace race;
    HeadlessSetup setup;
    setup.arcade = true; // as -ai2 races: the cars bump
    setup.laps = LAPS;
    headless_start(race, std::move(track), setup);
    headless_run(race, TIME_LIMIT_S);

    HeadlessLog const& red = race.log[0];
    HeadlessLog const& blue = race.log[1];
    double const stuck = std::max(red.stuck_seconds, blue.stuck_seconds);
    std::uint32_t best = 0;
    for (std::uint32_t const ms : red.lap_ms) best = best == 0 ? ms : std::min(best, ms);
    // The winner completes all laps; the other car finishes at its next crossing.
    bool const raced = std::max(red.lap_ms.size(), blue.lap_ms.size()) == LAPS &&
                       std::min(red.lap_ms.size(), blue.lap_ms.size()) >= 1;
    std::array<char, 128> found{};
    std::snprintf(found.data(), found.size(), "laps %zu and %zu, red's best %.3f s, stuck %.1f s",
                  red.lap_ms.size(), blue.lap_ms.size(), best / 1000.0, stuck);
    report.add(raced && stuck <= MAX_STUCK_S, path, found.data());
}

} // namespace

void check_tracks(Report& report) {
    std::array<std::string, 10> const files = discover_tracks();
    for (int slot = 1; slot <= 9; ++slot) {
        std::string const& path = files.at(static_cast<std::size_t>(slot));
        Track track;
        if (path.empty() || !load_track(path, track)) {
            report.add(false, slot_name(slot, path), "no track that loads");
            continue;
        }
        race_track(report, path, std::move(track));
    }
}

void check_track_pictures(Report& report) {
    std::array<std::string, 10> const files = discover_tracks();
    for (int slot = 1; slot <= 9; ++slot) {
        std::string const& path = files.at(static_cast<std::size_t>(slot));
        std::string const picture = picture_of_track(path);
        Track track;
        if (path.empty() || !load_track(path, track)) {
            report.add(false, slot_name(slot, path), "no track that loads");
            continue;
        }
        SDL_Point const size = picture_size(picture.c_str());
        double const ratio = size.y > 0 ? static_cast<double>(size.x) / size.y : 0.0;
        double const grid_ratio = static_cast<double>(track.width) / track.height;
        bool const good = std::abs(ratio - grid_ratio) < 0.01 && ratio <= MAX_PICTURE_RATIO &&
                          std::max(size.x, size.y) <= MAX_PICTURE_SIDE &&
                          std::min(track.width, track.height) >= MIN_GRID_SIDE;
        report.add(good, picture,
                   std::to_string(size.x) + " x " + std::to_string(size.y) + " pixels for " +
                       std::to_string(track.width) + " x " + std::to_string(track.height) +
                       " cells");
    }
}
