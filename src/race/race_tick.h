#pragma once

// What happens to one car in one tick, and with it the rules of racing: goal line, laps, best
// laps, recordings, the end of a player's race. No window, renderer or keys.

#include "race/simulation.h"

#include <string>

struct Audio;

// What a tick works on beside its player.
struct RaceContext {
    Simulation& sim;
    Track const& track;
    Audio& audio;
    std::string const& track_path;
    int track_slot;     // records are only kept for a slot above 0
    bool arcade;        // cars bump and nothing is recorded
    int ticks_per_step; // at least 1
};

// SIM_SPEED cut to a whole number, at least 1.
int ticks_per_step();

// One tick, number `i` of its step. True if the car touched a wall: its ticks of this step are
// over.
bool race_tick(RaceContext const& race, Player& player, int i);

// One whole 10 ms step of both cars; `now` is the frame's SDL_GetTicks, for effects only.
void race_step(RaceContext const& race, std::uint32_t now);

// 0 no crossing since the last call, 1 forward, 2 backward.
int check_goal_crossing(Player& player, Track const& track);
