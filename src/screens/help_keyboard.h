#pragma once

// The bare keyboard of the help page.

#include <SDL.h>

// Draws all keys into `rect`, which is 23 units wide.
void draw_keyboard(SDL_Renderer* renderer, SDL_Rect const& rect);
