#pragma once

// The switch between the window and the whole desktop, on F11 of the intro and the menu.

#include <SDL.h>

constexpr int WINDOW_W = 2560; // outside full screen, until somebody resizes it
constexpr int WINDOW_H = 1440;

// Whether a window of that size and its frame fit on the display; true if nobody knows.
bool has_room_for_window(int display);

// Flips `fullscreen` and brings the window in line with it. The first time that it leaves full
// screen it gets its size; where the display has no room for that it is maximised, so that its
// title bar can be reached, and keeps the size to be restored to.
void toggle_fullscreen(SDL_Window* window, bool& fullscreen);
