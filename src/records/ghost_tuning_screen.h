#pragma once

// The developer's screen for judging the ghost's rim by eye.

#include <SDL.h>

// Runs until Esc (true) or a quit event (false).
bool run_test_ghost(SDL_Window* window, SDL_Renderer* renderer);
