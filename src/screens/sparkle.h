#pragma once

// The glints on the title art: one at a time, a star that swells and fades on a rim point.

#include "base/sdl_handles.h"

#include <SDL.h>

#include <cstdint>
#include <vector>

// Ticks are SDL_GetTicks milliseconds.
struct Sparkle {
    int x = 0; // pixels of the title art
    int y = 0;
    std::uint32_t born_at = 0;
    std::uint32_t life_ms = 3000;
    float size = 0.0F; // the greatest side, logical pixels
};

struct SparkleFx {
    std::vector<SDL_Point> points; // where a sparkle may sit, pixels of the title art
    std::vector<Sparkle> sparkles;
    TextureHandle star;
    std::uint32_t next_spawn_at = 0;
    std::uint32_t intro_at = 0; // when the menu's intro began
};

// The star that all sparkles are drawn with: white, added to what lies under it. Null on failure.
TextureHandle make_sparkle_star(SDL_Renderer* renderer);
// Drops the sparkles that have lived and lets the next one come, for a view of this height.
void update_sparkles(SparkleFx& fx, int view_h, unsigned now);
// Draws them on art of `art_w` x `art_h` pixels that rests at `rest`, in logical pixels.
void draw_sparkles(SDL_Renderer* renderer, SparkleFx const& fx, int art_w, int art_h,
                   SDL_Rect const& rest, unsigned now);
