#pragma once

// The rules of a race as a whole, beside those of a tick (race_tick.h): the countdown's schedule,
// the clocks that are held, the time limit of who comes second, the end. All are called once a
// frame with the effect clock, SDL_GetTicks milliseconds in the game; none asks for it itself.

#include "race/race_events.h"
#include "race/simulation.h"

#include <cstdint>

constexpr std::int32_t GO_STEP = 3;             // of the countdown
constexpr std::uint32_t OUT_OF_TIME_MS = 20000; // after the first car's finish
constexpr std::uint32_t FADE_OUT_MS = 1000;     // a finished car, and the wait for game over

// Emits the beeps that are due; a late call emits all of them. At GO the clocks start.
void run_countdown(Simulation& sim, std::uint32_t now, RaceEvents& events);
// True once, when the race music is due after GO; `music_on` is set.
bool start_music_after_go(Simulation& sim, std::uint32_t now);
// Ends the race of each player who has not followed the first one home in time.
void stop_who_is_out_of_time(Simulation& sim, std::uint32_t now, RaceEvents& events);
// Before GO nobody drives and no clock runs, before a flying start's line no clock; a car that has
// finished and faded from sight is driven by nobody.
void hold_clocks(Simulation& sim);
// What is left of a car in sight and hearing: 1, or falling to 0 within a second of its finish.
float presence(PlayerView const& view, std::uint32_t now);
// True when both cars have been gone for long enough, until game over has begun.
bool race_is_over(Simulation const& sim, std::uint32_t now);
