#pragma once

// Operations on pictures in memory that several screens share.

#include "render/sdl_handles.h"

#include <cstdint>

// The one format that all our pixel loops work in: red in the lowest byte of a 32-bit value.
constexpr std::uint32_t PIXEL_FORMAT = SDL_PIXELFORMAT_ABGR8888;

// A copy of `surface` in PIXEL_FORMAT; null if it is null or conversion fails.
SurfaceHandle to_pixel_format(SDL_Surface* surface);
// IMG_Load and to_pixel_format; null on failure, with SDL_GetError set.
SurfaceHandle load_picture(char const* path);

// The exact area average, weighted by alpha so that transparent pixels lend no colour to an edge.
// `source` has 4 bytes a pixel and stays the caller's; w and h are at least 1. Null on failure.
SDL_Surface* downscale_box(SDL_Surface* source, int w, int h);
