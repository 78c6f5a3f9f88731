#pragma once

// The records of one competitor: the car, the controls, the clocks, the recordings, and what its
// view shows.

#include "base/car_state.h"
#include "base/sdl_handles.h"

#include <SDL.h>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

// One sample of a tyre mark.
struct SkidPoint {
    double x = 0.0; // cells
    double y = 0.0;
    double heading = 0.0;      // radians
    std::uint32_t time_ms = 0; // SDL_GetTicks of the frame that laid it
};

// Presentation state of a player. Ticks are SDL_GetTicks milliseconds, 0 meaning none.
struct PlayerView {
    SDL_Color body_color{};
    SDL_Color accent_color{};
    TextureHandle car_texture;         // null if the art failed to load
    TextureHandle ghost_texture;       // may be null
    SDL_Rect viewport{};               // logical pixels; width 0 means no view
    std::deque<SkidPoint> skid_points; // oldest first
    double skid_last_x = 0.0;          // cells: where the last sample was taken
    double skid_last_y = 0.0;
    double skid_carry = 0.0; // cells run since the last point
    std::uint32_t skid_last_ms = 0;
    bool skid_active = false;
    double cam_x = 0.0; // cells
    double cam_y = 0.0;
    double cam_vx = 0.0; // cells per second, the smooth camera's
    double cam_vy = 0.0;
    bool cam_ready = false; // placed since the last reset
    std::int32_t laps_done = 0;
    std::uint8_t car_alpha = 255;
    std::uint32_t finished_ms = 0; // when this player's race ended
    std::uint32_t best_lap_ms = 0; // since the records were cleared; a restart keeps it
    std::uint32_t last_lap_flash_ms = 0;
    std::uint32_t lap_overlay_until_ms = 0;
    std::uint32_t lap_overlay_time_ms = 0;
    bool lap_overlay_is_best = false;
    std::int32_t lap_overlay_record = 0; // 0 nothing, 1 personal best, 2 lap record
};

// One competitor. Clocks named *_ms of type double are times of the simulated clock.
struct Player {
    CarState car;
    CarState prev_car; // car at the start of the current step
    PlayerView view;
    Input input;
    double goal_prev_x = 0.0; // cells: the car at the last goal line test
    double goal_prev_y = 0.0;
    bool goal_prev_valid = false;
    double lap_start_ms = 0.0;
    double race_start_ms = 0.0;
    double finish_ms = 0.0;
    std::int32_t id = 0; // 1 red, 2 blue
    std::string name;    // without one no records are kept
    bool swap_when_reversing = true;
    bool invert_gas = false;
    float surface_rumble = 0.0F;
    bool brake_was_down = false;
    std::int32_t brake_latch_ticks = 0;
    std::int32_t stuck_ticks = 0; // steps in a row without getting away under gas, at most 12
    bool wrong_way = false;
    bool waiting_for_line = false;
    std::vector<CarState> trace;      // the lap under way, one frame a tick
    std::vector<CarState> best_trace; // the ghost that plays
    std::vector<CarState> disk_trace; // the saved ghost of this name and track
    std::uint32_t best_trace_substeps = 1;
    std::uint32_t disk_trace_substeps = 1;
    std::uint32_t best_trace_ms = 0; // 0: best_trace came from disk or is empty

    Player() = default;
    Player(Player const&) = delete;
    Player& operator=(Player const&) = delete;
};
