#pragma once

// What happens to one car in one tick, and with it the rules of racing: goal line, laps, best
// laps, recordings, the end of a player's race. No window, no clock, no sound and no file: what
// happened comes out as events.

#include "race/race_events.h"
#include "race/simulation.h"

#include <cstdint>

// What a tick works on beside its player. It changes the race and adds to the events.
struct RaceContext {
    Simulation& sim;
    Track const& track;
    RaceEvents& events;
    std::uint32_t now =
        1;               // the frame's effect clock, never 0 as that means none where it is stored
    bool arcade = false; // cars bump and nothing is recorded
    int ticks_per_step = 1; // at least 1
    bool recorded = true;   // false: nothing is, even where the cars pass each other
};

// SIM_SPEED cut to a whole number, at least 1.
int ticks_per_step();

// One tick, number `i` of its step. True if the car touched a wall: its ticks of this step are
// over.
bool race_tick(RaceContext& race, Player& player, int i);

// One whole 10 ms step of both cars.
void race_step(RaceContext& race);

// 0 no crossing since the last call, 1 forward, 2 backward.
int check_goal_crossing(Player& player, Track const& track);
