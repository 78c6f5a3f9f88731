#pragma once

// A test picture of the winner's banner, with no race behind it.

#include "base/fonts.h"

#include <SDL.h>

// Shows it until Esc or a quit event.
void run_winner_screen(SDL_Renderer* renderer, Fonts const& fonts);
