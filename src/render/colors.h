#pragma once

// Plain colours that several rooms draw with.

#include <SDL.h>

constexpr SDL_Color WHITE{255, 255, 255, 255};
constexpr SDL_Color BLACK{0, 0, 0, 255};
