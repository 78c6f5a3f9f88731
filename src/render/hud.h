#pragma once

// The bar of numbers on top of each player's view.

#include "base/fonts.h"
#include "base/player.h"

constexpr int BAR_HEIGHT = 30; // logical pixels

// `rect` is the view's viewport; `total_laps` is 0 or less without a limit; the times, in
// milliseconds, are those of lap_clock and total_clock.
void render_hud(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                CarState const& car, int total_laps, unsigned lap_ms, unsigned total_ms,
                Fonts const& fonts, bool show_ghost);
