#pragma once

// A picture of 256 colours instead of 16 million. It is decoded four times as fast and takes a
// quarter of the memory on its way to the screen, and a dithered one looks the same.

#include "base/sdl_handles.h"

// `picture` in SDL_PIXELFORMAT_INDEX8: colours chosen for it, those between them dithered. It
// is in PIXEL_FORMAT, and its alpha is not looked at. Null if there is no memory for it.
SurfaceHandle reduce_to_palette(SDL_Surface* picture);
