#pragma once

// Pictures that the menu prepares before its first frame: art cut to its visible part and reduced
// to the display, and the drawn ring of the help button.

#include "base/sdl_handles.h"

#include <SDL.h>

#include <functional>

// The picture at `path`, cut to what is visible of it and reduced to at most the height that
// `target_height` gives for the height of that part. Null on failure, with SDL_GetError set.
SurfaceHandle load_trimmed_art(char const* path, std::function<int(int)> const& target_height);

// A white rounded square, drawn as a line, for a help button of `size` logical pixels.
TextureHandle make_help_ring(SDL_Renderer* renderer, int size, double menu_scale);
