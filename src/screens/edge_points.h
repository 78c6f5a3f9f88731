#pragma once

// Where on a picture a glint looks right: just inside the rim of its bright parts.

#include <SDL.h>

#include <vector>

// The points in reading order, in the picture's pixels; empty if the picture cannot be converted.
// The picture stays the caller's.
std::vector<SDL_Point> build_edge_points(SDL_Surface* image);
