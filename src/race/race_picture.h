#pragma once

// One frame of the race screen, drawn from the state of the race. Nothing of the race changes; the
// fade from black notes when it has ended.

#include "base/car_state.h"

#include <cstdint>

class GameLoop;

// Game over comes up for so long; then its picture stands still.
constexpr std::uint32_t GAME_OVER_FADE_MS = 2000;

// What a frame is drawn from beside the race itself.
struct RacePicture {
    CarState red; // the cars between the last two steps; only drawing uses them
    CarState blue;
    double alpha = 0.0;           // how far between the steps, 0..1
    std::uint32_t input_tick = 0; // SDL_GetTicks when the frame's events had been read
    std::uint32_t draw_tick = 0;  // SDL_GetTicks after its steps
};

// Draws both views with all that lies over them; presenting is the caller's.
void draw_race(GameLoop& g, RacePicture const& picture);
