#pragma once

// A small picture of a track for print, with a lap drawn on it as a red line.

#include <SDL.h>

#include <cstdint>
#include <string>
#include <vector>

// The picture reduced to a long side of at most 520 pixels, on white, with the line through
// `points` (in cells of a grid of grid_w by grid_h). No points or a grid side below 1: no line. A
// new surface owned by the caller, opaque, in PIXEL_FORMAT; null on failure.
SDL_Surface* build_miniature(std::string const& png, std::vector<SDL_FPoint> const& points,
                             int grid_w, int grid_h);

// Paints an anti-aliased dot on a surface in PIXEL_FORMAT; positions and radius in pixels, (0, 0)
// being the corner of the first one.
void stamp_disk(SDL_Surface* surface, double cx, double cy, double radius, std::uint8_t r,
                std::uint8_t g, std::uint8_t b);
