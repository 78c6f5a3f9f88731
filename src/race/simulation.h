#pragma once

// The state of a race: both players and what is true of the race as a whole, with the operations
// that put it back at its start and end it. Knows no window and no keys.

#include "base/finish_seq.h"
#include "base/player.h"
#include "world/track.h"

#include <cstdint>
#include <functional>

struct Audio;

// Simulated time of one step of the clock.
constexpr std::uint32_t STEP_MS = 10;
constexpr std::uint32_t STEPS_PER_SECOND = 1000 / STEP_MS;

struct Countdown {
    std::uint32_t start_tick = 0; // SDL_GetTicks when it began
    std::int32_t step = 0;        // next beep, 0..3; 4 after GO
    bool active = false;
};

class Simulation {
public:
    Player p1; // red
    Player p2; // blue
    // The simulated clock that laps are timed on: grows by 10 with every step, never goes back.
    std::uint64_t sim_time_ms = 0;
    bool flying_start = false;
    bool practice = false;               // no countdown, and the music starts at once
    std::int32_t laps = 0;               // 0 means no end
    std::uint32_t first_finish_tick = 0; // SDL_GetTicks, 0 for none; so the ticks below
    std::int32_t winner = 0;             // id of the first finisher
    bool game_over = false;
    std::uint32_t game_over_tick = 0;
    FinishSeq finish_seq;
    Countdown countdown;
    bool music_on = false; // race music should be running
    std::uint32_t music_start_tick = 0;
    Track const* track = nullptr; // not owned; null until the first restart

    // Puts the race state back to its start. `clear` forgets the best laps in memory,
    // `keep_music` leaves the music alone.
    void restart(bool clear, bool keep_music, Track const& new_track, Audio& audio,
                 float music_volume, std::function<void()> const& apply_music,
                 std::function<char const*()> const& pick_music,
                 std::function<void()> const& clear_records, bool flying_start_wanted,
                 bool practice_wanted, int laps_wanted);
    // The end of every step: anti-stuck and skid trails. Nothing before the first restart.
    void postTick(std::uint32_t now);
    // Enters game over; each player still racing ends here. A second call changes nothing.
    void beginGameOver(std::uint32_t now);
};

// One player to the grid; best laps, ghost and settings stay. `side` -1 left, 1 right of the
// start direction.
void reset_player(Player& player, Track const& track, int side);
void place_car_at_start(CarState& car, Track const& track, int side);
// Moves both cars straight back for a run-up of at most 199.6 cells, as far as the road goes.
void place_cars_flying_start(CarState& first, CarState& second, Track const& track);
// Both players to the grid, or behind the line for a flying start, their clocks at this moment.
void line_up_players(Simulation& sim, Track const& track);
// False for a car that, under gas, would be held by a wall or the other car: in this step it has
// hardly moved.
bool has_got_away(Player const& player);
// The end of a step for one player: frees a car that is stuck under gas, lays the skid trail.
void post_tick(Player& player, Track const& track, std::uint32_t now);
void start_countdown(Countdown& countdown, std::uint32_t now);
// The player's clocks begin at `at_ms` of the simulated clock.
void start_clocks(Player& player, double at_ms);
// The player's race ends: at `now` for the eye, at `at_ms` on the simulated clock.
void end_race_of(Player& player, std::uint32_t now, double at_ms);
