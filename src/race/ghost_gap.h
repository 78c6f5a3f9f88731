#pragma once

// How far a player is ahead of the ghost or behind it, at the same place of the lap. The ghost's
// recording becomes an index once, when the ghost is set: places along its way with the ghost's
// time at each. In the race a look-up projects the car onto that way.

#include "base/car_state.h"
#include "world/track.h"

#include <array>
#include <cstdint>
#include <vector>

// A place on the ghost's way.
struct GhostPlace {
    double x = 0.0; // cells
    double y = 0.0;
    double ms = 0.0;        // of the ghost's lap
    std::int32_t steps = 0; // start_distance of its cell
};

struct GhostIndex {
    std::vector<GhostPlace> places;     // half a cell or more apart
    std::vector<std::uint32_t> reached; // by steps: the first place that is so far round the lap
    std::array<double, 3> quarters{};   // ghost's times at each quarter of the way but the last
    double lap_ms = 0.0;
};

// One player's gap; empty places mean that there is no ghost.
struct GhostGap {
    GhostIndex index;
    // Where the car was last seen. Steps are -1 until it has been.
    std::int32_t steps = -1;
    double ghost_ms = 0.0; // the ghost's time at that place
    double lap_ms = 0.0;   // the player's
    int jumps = 0;         // frames in a row in which the car seemed to be elsewhere
    int next_quarter = 0;
    // What is told. Times are milliseconds, less than 0 for a player who is ahead; ticks are
    // SDL_GetTicks.
    bool shows = false;
    double gap_ms = 0.0; // changes a few times a second, so that it can be read
    std::uint32_t gap_tick = 0;
    double split_ms = 0.0;
    int split_quarter = 0; // 1 to 4, 0 before the first
    std::uint32_t split_tick = 0;
};

constexpr std::uint32_t SPLIT_SHOWS_MS = 1000;

// A new ghost, or none if there are no frames. `ticks_per_step` is the recording's.
void set_ghost(GhostGap& gap, Track const& track, std::vector<CarState> const& frames,
               unsigned ticks_per_step);
// The ghost's time where it was nearest to (x, y), a place `steps` round the lap; negative if it
// has not been near.
double ghost_time_at(GhostIndex const& index, double x, double y, std::int32_t steps);

// The line has been crossed, or the race put back to its start.
void start_gap(GhostGap& gap);
// Once a frame: the car as drawn, `lap_ms` into its lap.
void update_gap(GhostGap& gap, Track const& track, CarState const& car, double lap_ms,
                std::uint32_t now);
// The split of a whole lap. Before the next ghost is set.
void end_gap(GhostGap& gap, double lap_ms, std::uint32_t now);
