#pragma once

// What the players' pads let them feel: walls and bumps in the deep motor, by how hard they were,
// skids in the fine one, by how fast the car slides sideways.

#include "race/race_events.h"
#include "race/simulation.h"

#include <array>
#include <cstdint>

class Pads;

// The hits that are still felt, by player.
struct RaceRumble {
    struct Hit {
        float strength = 0.0F;
        std::uint32_t until = 0; // SDL_GetTicks
    };
    std::array<Hit, 2> hits{};
};

void note_hits(RaceRumble& rumble, RaceEvents const& events, std::uint32_t now);
// Once a frame; a player that the computer drives feels nothing.
void feel_race(RaceRumble const& rumble, Simulation const& sim, Pads& pads,
               std::array<bool, 2> by_computer, std::uint32_t now);
