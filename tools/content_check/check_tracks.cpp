#include "content_check/checks.h"
#include "content_check/race_statistics.h"
#include "content_check/report.h"
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

constexpr int RACES = 2; // one from the boxes, one with a flying start
constexpr int LAPS = 2;
constexpr double MAX_STAND_S = 5.0;        // simulated
constexpr int MAX_PICTURE_SIDE = 8192;     // some GPUs take no larger texture
constexpr double MAX_PICTURE_RATIO = 1.75; // five thumbnails share a row of the menu
constexpr int MIN_GRID_SIDE = 321; // larger grids are drawn at one pixel a cell, in full detail

std::string slot_name(int slot, std::string const& path) {
    return path.empty() ? "slot " + std::to_string(slot) : path;
}

// A few of the races that track_races runs by the hundred.
void race_track(Report& report, std::string const& path, Track track) {
    RaceStatistics found;
    race_often(std::move(track), RACES, LAPS, found);
    bool const good =
        found.turned_at.empty() && found.incomplete == 0 && found.longest_stand < MAX_STAND_S;
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(),
                  "best lap %.3f s, %zu of %d drivers turned, longest stand %.1f s",
                  found.laps.empty() ? 0.0 : found.laps[0], found.turned_at.size(), found.drivers,
                  found.longest_stand);
    report.add(good, path, text.data());
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
