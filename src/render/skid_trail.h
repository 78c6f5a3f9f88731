#pragma once

// Tyre marks: laid while a car skids, faded out over four seconds, drawn as one batch of quads.

#include "base/player.h"

#include <SDL.h>

// Once per 10 ms step; `now` is the frame's SDL_GetTicks.
void update_skid_trail(PlayerView& view, CarState const& car, unsigned now);

// Draws the marks of `view` inside `clip`; `left`, `top` are the map pixel at the clip's corner.
void draw_skids(SDL_Renderer* renderer, PlayerView const& view, int left, int top, unsigned now,
                SDL_Rect const& clip);
