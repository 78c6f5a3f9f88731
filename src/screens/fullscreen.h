#pragma once

// The switch between the window and the whole desktop, on F11 of the intro and the menu.

#include <SDL.h>

// Flips `fullscreen` and brings the window in line with it.
void toggle_fullscreen(SDL_Window* window, bool& fullscreen);
