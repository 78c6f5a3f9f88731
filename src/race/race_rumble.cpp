#include "race/race_rumble.h"

#include "input/pads.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float SHORTEST_HIT_MS = 80.0F;
constexpr float HIT_MS = 220.0F; // on top of that, for the hardest
// Sideways speed in cells per tick at which the fine motor runs in full: a third of what a car does
// at most.
constexpr double HARD_SKID = 0.1;

void hit(RaceRumble::Hit& felt, float strength, std::uint32_t now) {
    if (now < felt.until && strength < felt.strength) return; // a harder one is still felt
    felt = {strength, now + static_cast<std::uint32_t>(SHORTEST_HIT_MS + HIT_MS * strength)};
}

float skid(CarState const& car) {
    if (!car.skidding) return 0.0F;
    double const sideways = car.speed * std::abs(std::sin(car.heading - car.travel_dir));
    return static_cast<float>(std::min(1.0, sideways / HARD_SKID));
}

} // namespace

void note_hits(RaceRumble& rumble, RaceEvents const& events, std::uint32_t now) {
    for (RaceEvent const& event : events) {
        bool const bump = event.kind == RaceEventKind::Bump;
        bool const wall = event.kind == RaceEventKind::WallHit;
        if (bump || (wall && event.player == 1)) hit(rumble.hits[0], event.loudness, now);
        if (bump || (wall && event.player == 2)) hit(rumble.hits[1], event.loudness, now);
    }
}

void feel_race(RaceRumble const& rumble, Simulation const& sim, Pads& pads,
               std::array<bool, 2> by_computer, std::uint32_t now) {
    for (Player const* player : {&sim.p1, &sim.p2}) {
        auto const i = static_cast<std::size_t>(player->id - 1);
        bool const drives = !by_computer.at(i) && !sim.game_over && player->view.car_alpha != 0;
        RaceRumble::Hit const& felt = rumble.hits.at(i);
        float const deep = drives && now < felt.until ? felt.strength : 0.0F;
        pads.rumble(player->id, deep, drives ? skid(player->car) : 0.0F, now);
    }
}
