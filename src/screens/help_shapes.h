#pragma once

// What the help page is drawn with: shapes made of horizontal lines, and pieces of text. All in
// pixels of the render target.

#include "base/sdl_handles.h"
#include "render/rendered_text.h"
#include "screens/screen_font.h"

// A filled rectangle with round corners of `radius`, at most half its shorter side.
void fill_rrect(SDL_Renderer* renderer, SDL_Rect const& rect, int radius, SDL_Color color);

void fill_triangle(SDL_Renderer* renderer, SDL_Point a, SDL_Point b, SDL_Point c, SDL_Color color);

void draw_page_text(SDL_Renderer* renderer, RenderedText const& text, int x, int y);

constexpr int LEAST_FONT_SIZE = 6; // of the page, in pixels

constexpr char const* FONT_ROUNDED = "art/fonts/Quango-xlVR.otf";
constexpr char const* FONT_SEMIBOLD = "art/fonts/Montserrat-SemiBold.otf";
constexpr char const* FONT_MONO = "art/fonts/LiberationMono-Bold.ttf";
