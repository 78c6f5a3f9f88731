#pragma once

// Real software renderers, over a surface in memory or in a window without a screen, and colours to
// compare, for tests that look at pixels.

#include "base/sdl_handles.h"

#include <SDL.h>

#include <iosfwd>
#include <vector>

bool operator==(SDL_Color a, SDL_Color b);
void PrintTo(SDL_Color color, std::ostream* out);
// How far they are apart in the channel where they are farthest.
int difference(SDL_Color a, SDL_Color b);

class Canvas {
public:
    Canvas(int width, int height);
    ~Canvas();
    Canvas(Canvas const&) = delete;
    Canvas& operator=(Canvas const&) = delete;

    [[nodiscard]] SDL_Renderer* renderer() const { return renderer_; }
    // The pixel as drawn so far; (x, y) lies within the canvas, which begins opaque black.
    [[nodiscard]] SDL_Color at(int x, int y) const;
    void clear(SDL_Color color);
    // How many pixels of `area` have exactly this colour (alpha not looked at).
    [[nodiscard]] int count(SDL_Rect const& area, SDL_Color color) const;
    // How many pixels of `area` differ from this colour by more than `tolerance` in any channel.
    [[nodiscard]] int count_other(SDL_Rect const& area, SDL_Color color, int tolerance = 0) const;

    // All pixels of `area`, row by row.
    [[nodiscard]] std::vector<SDL_Color> pixels(SDL_Rect const& area) const;

private:
    SurfaceHandle surface_;
    SDL_Renderer* renderer_ = nullptr;
};

// A window of the driver without a screen, with the game's logical size whatever its own.
class ScreenlessWindow {
public:
    explicit ScreenlessWindow(SDL_Point size);
    ~ScreenlessWindow();
    ScreenlessWindow(ScreenlessWindow const&) = delete;
    ScreenlessWindow& operator=(ScreenlessWindow const&) = delete;

    [[nodiscard]] SDL_Window* window() const { return window_; }
    [[nodiscard]] SDL_Renderer* renderer() const { return renderer_; }
    void resize(SDL_Point size);
    // Every pixel of the window as drawn so far.
    [[nodiscard]] std::vector<std::uint32_t> pixels() const;

private:
    SDL_Window* window_;
    SDL_Renderer* renderer_;
};

// A new surface of SDL_PIXELFORMAT_ABGR8888, the format that our pixel loops work in, all pixels
// `fill`.
SurfaceHandle make_surface(int width, int height, SDL_Color fill);
SDL_Color surface_pixel(SDL_Surface const* surface, int x, int y);
void set_surface_pixel(SDL_Surface* surface, int x, int y, SDL_Color color);
std::vector<SDL_Color> surface_pixels(SDL_Surface const* surface, SDL_Rect const& area);
