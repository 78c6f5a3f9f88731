#pragma once

// The bare keyboard of the help page, and the pieces that its keys are made of. All in pixels.

#include <SDL.h>

#include <string_view>

// Draws all keys into `rect`, which is 23 units wide.
void draw_keyboard(SDL_Renderer* renderer, SDL_Rect const& rect);

// A key: the body, and on it the cap, more of the body showing below than above. Returns the cap's
// place, where the lettering goes.
SDL_Rect draw_key_cap(SDL_Renderer* renderer, SDL_Rect const& body, int bevel, int corner);
// "<UP>", "<DOWN>", "<LEFT>" or "<RIGHT>" on a cap.
void draw_key_arrow(SDL_Renderer* renderer, std::string_view label, SDL_Rect const& cap);
