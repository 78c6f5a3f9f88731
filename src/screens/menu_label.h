#pragma once

// Labels of the menu: a text that was rendered once, at the output's resolution, and is drawn at
// its logical size. Positions on the menu stay logical while its text stays sharp.

#include "base/sdl_handles.h"

#include <SDL.h>
#include <SDL_ttf.h>

struct MenuLabel {
    TextureHandle tex; // null if rendering failed; then both sizes are 0
    int w = 0;         // logical pixels
    int h = 0;
};

// Output pixels per logical pixel: output height over logical height, 1.0 without a logical size.
double menu_scale(SDL_Renderer* renderer);
// The size at which a font of `design` logical pixels is opened, at least 1.
int menu_font_size(double design, double scale);

// `scale` is the menu_scale that `font` was opened for. A null font gives the empty label.
MenuLabel make_label(SDL_Renderer* renderer, double scale, TTF_Font* font, char const* text,
                     SDL_Color colour);

// The label with its top left corner at (x, y), tinted; an empty one draws nothing. The tint's
// alpha is not looked at.
void draw_label(SDL_Renderer* renderer, MenuLabel const& label, int x, int y, SDL_Color tint);
