#pragma once

// A real software renderer over a surface in memory, for tests that look at pixels.

#include "base/sdl_handles.h"

#include <SDL.h>

class Canvas {
public:
    Canvas(int width, int height);
    ~Canvas();
    Canvas(Canvas const&) = delete;
    Canvas& operator=(Canvas const&) = delete;

    [[nodiscard]] SDL_Renderer* renderer() const { return renderer_; }
    // The pixel as drawn so far; opaque black outside nothing: x, y must lie within the canvas.
    [[nodiscard]] SDL_Color at(int x, int y) const;
    void clear(SDL_Color color);
    // How many pixels of `area` have exactly this colour (alpha not looked at).
    [[nodiscard]] int count(SDL_Rect const& area, SDL_Color color) const;
    // How many pixels of `area` differ from this colour by more than `tolerance` in any channel.
    [[nodiscard]] int count_other(SDL_Rect const& area, SDL_Color color, int tolerance = 0) const;

private:
    SurfaceHandle surface_;
    SDL_Renderer* renderer_ = nullptr;
};

// A new surface of the format of value 0x16762004, all pixels `fill`.
SurfaceHandle make_surface(int width, int height, SDL_Color fill);
SDL_Color surface_pixel(SDL_Surface const* surface, int x, int y);
void set_surface_pixel(SDL_Surface* surface, int x, int y, SDL_Color color);
