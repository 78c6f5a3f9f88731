#pragma once

// Car pictures: from a large drawing to a small clean texture, and one car on the screen with its
// shadow, heading and opacity.

#include "base/car_size.h"
#include "base/sdl_handles.h"

#include <cstdint>

// How much of a ghost shows, of 255.
constexpr std::uint8_t GHOST_ALPHA = 128;

// Loads a picture of a car, nose up, and reduces it for the renderer's output. Empty on failure,
// silently.
TextureHandle load_car_texture(SDL_Renderer* renderer, char const* path);
// The same from a surface of 4 bytes a pixel, which stays the caller's and is not changed.
TextureHandle car_texture_from_surface(SDL_Renderer* renderer, SDL_Surface* surface);

// Draws a car centred on (x, y), in pixels of the render surface; `heading` in radians, 0 to the
// right, growing clockwise. With a null texture the car is three coloured quads, of `body` and
// `accent`, and has no shadow.
void draw_car_at(SDL_Renderer* renderer, float x, float y, double heading, SDL_Texture* texture,
                 SDL_Color body, SDL_Color accent, std::uint8_t alpha);
