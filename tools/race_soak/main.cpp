// Lets two computer drivers race for a long simulated time, twice over, and looks at every step: a
// car must stay on the grid, keep moving and hold numbers only, and both races must agree bit for
// bit.
//   race_soak SECONDS [TRACK_FILE...]     the built-in course if no track is named
// One line for each track on standard error, the laps on standard output; exit status 1 if
// anything is wrong. Builds that print the same lines drive the same races.

#include "race/headless_race.h"
#include "world/geometry.h"
#include "world/track_file.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr double STUCK_RADIUS = 10.0; // cells: a car that stays within them is getting nowhere
constexpr double STUCK_S = 5.0;

// Where a car has been lately.
struct Watch {
    Vec2 place;
    std::uint64_t since = 0; // step
    std::uint64_t longest = 0;
};

struct Outcome {
    std::uint64_t hash = HEADLESS_HASH_START;
    std::array<Watch, 2> watches;
    std::array<std::size_t, 2> laps{};
    int hits = 0;
    bool lost = false; // a car off the grid, or not a number
};

bool is_sound(CarState const& car, Track const& track) {
    bool const finite = std::isfinite(car.x + car.y + car.speed + car.heading + car.travel_dir) &&
                        std::isfinite(car.throttle);
    return finite && car.x >= 0.0 && car.x < track.width && car.y >= 0.0 && car.y < track.height;
}

void watch(Watch& of, CarState const& car, std::uint64_t step) {
    Vec2 const here{car.x, car.y};
    of.longest = std::max(of.longest, step - of.since);
    if (step != 0 && length(here - of.place) < STUCK_RADIUS) return;
    of.place = here;
    of.since = step;
}

Outcome race(Track const& track, double seconds) {
    PIXELS_PER_CELL = game_scale(track);
    HeadlessRace race;
    headless_start(race, track, {.arcade = true}); // as the game races two computer drivers
    Outcome outcome;
    auto const steps = static_cast<std::uint64_t>(seconds * 100.0);
    while (race.steps < steps && !outcome.lost) {
        headless_step(race);
        outcome.hash = headless_hash(race, outcome.hash);
        outcome.lost = !is_sound(race.sim.p1.car, track) || !is_sound(race.sim.p2.car, track);
        watch(outcome.watches[0], race.sim.p1.car, race.steps);
        watch(outcome.watches[1], race.sim.p2.car, race.steps);
    }
    outcome.laps = {race.log[0].lap_ms.size(), race.log[1].lap_ms.size()};
    outcome.hits = race.log[0].hits + race.log[1].hits;
    return outcome;
}

bool soak(char const* name, Track const& track, double seconds) {
    Outcome const first = race(track, seconds);
    Outcome const second = race(track, seconds);
    double const stuck =
        0.01 * static_cast<double>(std::max(first.watches[0].longest, first.watches[1].longest));
    bool const same = first.hash == second.hash;
    bool const good = same && !first.lost && stuck < STUCK_S;
    std::fprintf(stderr,
                 "%s %s: %016" PRIx64 ", laps %zu and %zu, hits %d, at most %.2f s in one "
                 "place%s%s\n",
                 good ? "good" : "BAD", name, first.hash, first.laps[0], first.laps[1], first.hits,
                 stuck, same ? "" : ", the second race differs",
                 first.lost ? ", a car is lost" : "");
    return good;
}

} // namespace

int main(int argc, char** argv) {
    double const seconds = argc > 1 ? std::atof(argv[1]) : 0.0;
    if (!(seconds > 0.0)) {
        std::fprintf(stderr, "usage: race_soak SECONDS [TRACK_FILE...]\n");
        return 2;
    }
    if (argc == 2) return soak("the built-in course", make_default_track(), seconds) ? 0 : 1;
    bool good = true;
    for (int i = 2; i < argc; ++i) {
        Track track;
        bool const loaded = load_track(argv[i], track);
        if (!loaded) std::fprintf(stderr, "BAD %s: does not load\n", argv[i]);
        good = loaded && soak(argv[i], track, seconds) && good;
    }
    return good ? 0 : 1;
}
