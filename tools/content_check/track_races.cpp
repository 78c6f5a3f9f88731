// track_races GAME_FOLDER RACES [SLOT...]: how the computer's drivers fare on the tracks of a game
// folder, in RACES races of two bumping cars and three laps on each. One line a track on standard
// error (standard output has what the rules announce), and under it the places, in cells, where
// drivers turned or stood; exit status 1 if more than one driver in a hundred turned round, or any
// stood still for 5 s or did not come home.

#include "content_check/race_statistics.h"
#include "world/track_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <utility>

namespace {

constexpr int LAPS = 3;
constexpr double LONGEST_STAND_S = 5.0;

bool race_slot(std::string const& path, int races) {
    Track track;
    if (path.empty() || !load_track(path, track)) {
        std::fprintf(stderr, "%s: no track that loads\n", path.c_str());
        return false;
    }
    RaceStatistics found;
    race_often(std::move(track), races, LAPS, found);
    std::size_t const count = found.laps.size();
    auto const lap = [&](std::size_t at) { return count == 0 ? 0.0 : found.laps[at]; };
    std::size_t const turned = found.turned_at.size();
    bool const good = turned * 100 <= static_cast<std::size_t>(found.drivers) &&
                      found.incomplete == 0 && found.longest_stand < LONGEST_STAND_S;
    std::fprintf(stderr,
                 "%-16s %4d drivers, %zu turned, %d not home, longest stand %.2f s, laps %.2f / "
                 "%.2f / %.2f s: "
                 "%s\n",
                 track_name_from_path(path).c_str(), found.drivers, turned, found.incomplete,
                 found.longest_stand, lap(0), lap(count / 2),
                 lap(std::max<std::size_t>(count, 1) - 1), good ? "good" : "BAD");
    for (Vec2 const at : found.turned_at) {
        std::fprintf(stderr, "    one turned at %.0f %.0f\n", at.x, at.y);
    }
    if (found.longest_stand >= LONGEST_STAND_S) {
        std::fprintf(stderr, "    one stood at %.0f %.0f\n", found.stood_at.x, found.stood_at.y);
    }
    return good;
}

} // namespace

int main(int argc, char** argv) {
    std::span<char*> const words(argv, static_cast<std::size_t>(argc));
    std::error_code error;
    int const races = argc > 2 ? std::atoi(words[2]) : 0;
    if (argc > 1) std::filesystem::current_path(words[1], error);
    if (races < 1 || error) {
        std::fprintf(stderr, "usage: track_races GAME_FOLDER RACES [SLOT...]\n");
        return 2;
    }
    std::array<bool, 10> wanted{};
    for (char const* word : words.subspan(3)) {
        wanted.at(static_cast<std::size_t>(std::atoi(word)) % 10) = true;
    }
    std::array<std::string, 10> const files = discover_tracks();
    bool good = true;
    for (std::size_t slot = 1; slot < files.size(); ++slot) {
        if (argc > 3 ? wanted.at(slot) : !files.at(slot).empty()) {
            good &= race_slot(files.at(slot), races);
        }
    }
    return good ? 0 : 1;
}
