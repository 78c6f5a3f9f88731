#pragma once

// What the race says on the screen, beyond the words that the race picture has always had: from
// the race's state where that tells it, from its events otherwise. While there is nothing to say,
// not a pixel changes.

#include "base/fonts.h"
#include "race/ghost_gap.h"
#include "race/race_events.h"
#include "race/simulation.h"
#include "render/notices.h"
#include "world/geometry.h"

#include <array>
#include <cstdint>

// How one player's race went.
struct RaceResult {
    bool finished = false; // by the line; else stopped
    bool out_of_time = false;
    std::uint32_t best_lap_ms = 0; // of this race
    int record = 0;                // the best that a lap of this race became: 1 personal, 2 of all
};

// Where a view's warnings stand, as shares of its height; 0 while there is none. They stay where
// they came up, though the cars drive on: words that jump cannot be read.
struct WarningPlaces {
    double wrong = 0.0;
    double time_left = 0.0;
};

// Ticks are SDL_GetTicks milliseconds.
struct RaceNotices {
    std::uint32_t start_tick = 0;      // when the race was put to its start
    int count = -1;                    // the last beep of the countdown, -1 before the first
    std::uint32_t count_tick = 0;      // of the frame that sounded it
    std::array<Vec2, 2> starts;        // where the cars stood at the start, cells: red, blue
    std::array<RaceResult, 2> results; // red, blue
    std::array<GhostGap, 2> gaps;
    std::array<WarningPlaces, 2> places; // red's view, blue's
};

// The race is at its start again.
void start_notices(RaceNotices& notices, std::uint32_t now);
// The cars stand at their start, before or after that.
void note_starts(RaceNotices& notices, Simulation const& sim);
// What has just been reported.
void note_events(RaceNotices& notices, Simulation const& sim, RaceEvents const& events,
                 std::uint32_t now);
// A ghost was set or taken away by other means than a lap.
void note_ghosts(RaceNotices& notices, Simulation const& sim);

// A frame's view of it all.
struct NoticePicture {
    SDL_Renderer* renderer;
    Fonts const& fonts;
    RaceNotices const& notices;
    Simulation const& sim;
    std::uint32_t now;
};

// Once a frame, before drawing. The cars are those drawn, `alpha` of the way between two steps.
void update_gaps(RaceNotices& notices, Simulation const& sim, CarState const& red,
                 CarState const& blue, double alpha, std::uint32_t now);
// Once a frame, before drawing and once the cameras stand: finds room for warnings that come up.
void place_warnings(RaceNotices& notices, Fonts const& fonts, Simulation const& sim,
                    CarState const& red, CarState const& blue, std::uint32_t now);
// All that one player's view says.
void draw_view_notices(NoticePicture const& picture, Player const& player, bool ghost_visible);
// Whose race it was, as the players read it.
ResultTable result_table(RaceNotices const& notices, Simulation const& sim);
