#pragma once

// The title picture with the menu's music under it.

#include "base/fonts.h"

#include <SDL.h>

class Pads;
struct Audio;

// True to go on to the menu, with the music still playing; false to quit. `pads` may be null.
bool run_intro_screen(SDL_Window* window, SDL_Renderer* renderer, Audio& audio, Fonts const& fonts,
                      bool& fullscreen, Pads* pads = nullptr);
