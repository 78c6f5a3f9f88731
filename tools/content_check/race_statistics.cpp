#include "content_check/race_statistics.h"

#include "race/headless_race.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace {

constexpr double LAP_LIMIT_S = 130.0; // simulated
constexpr int TURNED_STEPS = 150;     // cells back along the course that no skid explains
constexpr double AWAY = 13.0;         // cells, a car's width: who has moved as far has got away

// A number of 0..1 that looks like chance: the same races every time.
double chance(std::uint32_t race, std::uint32_t what) {
    std::uint32_t h = race * 0x9E3779B1U ^ what * 0x85EBCA77U;
    h = (h ^ (h >> 15U)) * 0x2C1B3C6DU;
    h = (h ^ (h >> 12U)) * 0x297A2D39U;
    h ^= h >> 15U;
    return static_cast<double>(h) / 4294967296.0;
}

// Half of the races begin behind the line and half in the boxes, every car a little off its place.
void shift(HeadlessRace& race, std::uint32_t number) {
    std::uint32_t what = 0;
    for (Player* player : {&race.sim.p1, &race.sim.p2}) {
        double const ahead = (race.setup.flying_start ? 60.0 : 24.0) * chance(number, what++);
        double const beside = 5.0 * (chance(number, what++) - 0.5);
        CarState& car = player->car;
        double const c = std::cos(car.heading);
        double const s = std::sin(car.heading);
        car.x += ahead * c - beside * s;
        car.y += ahead * s + beside * c;
        car.heading += 0.1 * (chance(number, what++) - 0.5);
        player->prev_car = car;
        player->goal_prev_x = car.x;
        player->goal_prev_y = car.y;
    }
}

// Follows one driver through a race.
struct Watch {
    double anchor_x = 0.0; // where it last got away from
    double anchor_y = 0.0;
    std::uint64_t anchor_step = 0;
    int steps = -1;   // from the start, as the track counts them
    int progress = 0; // the same, counted on from lap to lap
    int furthest = 0;
    Vec2 furthest_at; // where that was
    bool turned = false;
    double longest_stand = 0.0;
    Vec2 stood_at;

    void note(HeadlessRace const& race, Player const& player) {
        CarState const& car = player.car;
        if (std::hypot(car.x - anchor_x, car.y - anchor_y) > AWAY) {
            anchor_x = car.x;
            anchor_y = car.y;
            anchor_step = race.steps;
        }
        double const stand = 0.01 * static_cast<double>(race.steps - anchor_step);
        if (stand > longest_stand) {
            longest_stand = stand;
            stood_at = {car.x, car.y};
        }
        Track const& track = race.track;
        int const here =
            track.start_distance[track.index(static_cast<int>(car.x), static_cast<int>(car.y))];
        if (here < 0) return;
        int const lap = track.start_distance_max + 2;
        int gone = steps < 0 ? 0 : here - steps;
        if (gone > lap / 2) gone -= lap;
        if (gone < -lap / 2) gone += lap;
        steps = here;
        progress += gone;
        turned = turned || furthest - progress > TURNED_STEPS || player.wrong_way;
        if (turned || progress < furthest) return;
        furthest = progress;
        furthest_at = {car.x, car.y};
    }
};

void note_race(HeadlessRace const& race, std::array<Watch, 2> const& watches,
               RaceStatistics& statistics) {
    for (std::size_t i = 0; i < watches.size(); ++i) {
        Player const& player = i == 0 ? race.sim.p1 : race.sim.p2;
        statistics.drivers++;
        if (watches[i].turned) statistics.turned_at.push_back(watches[i].furthest_at);
        statistics.incomplete += player.view.finished_ms == 0 ? 1 : 0;
        if (watches[i].longest_stand > statistics.longest_stand) {
            statistics.longest_stand = watches[i].longest_stand;
            statistics.stood_at = watches[i].stood_at;
        }
        for (std::uint32_t const ms : race.log[i].lap_ms) statistics.laps.push_back(ms / 1000.0);
    }
}

} // namespace

Track race_often(Track track, int races, int laps, RaceStatistics& statistics) {
    for (int number = 0; number < races; ++number) {
        PIXELS_PER_CELL = game_scale(track);
        HeadlessRace race;
        HeadlessSetup setup;
        setup.arcade = true; // as wherever the computer drives in the game: the cars bump
        setup.laps = laps;
        setup.flying_start = number % 2 == 0;
        headless_start(race, std::move(track), setup);
        shift(race, static_cast<std::uint32_t>(number));
        std::array<Watch, 2> watches;
        auto const limit = static_cast<std::uint64_t>(100.0 * LAP_LIMIT_S * laps);
        auto const racing = [](Player const& player) { return player.view.finished_ms == 0; };
        while (race.steps < limit && (racing(race.sim.p1) || racing(race.sim.p2))) {
            headless_step(race);
            if (racing(race.sim.p1)) watches[0].note(race, race.sim.p1);
            if (racing(race.sim.p2)) watches[1].note(race, race.sim.p2);
        }
        note_race(race, watches, statistics);
        track = std::move(race.track);
    }
    std::sort(statistics.laps.begin(), statistics.laps.end());
    return track;
}
