#pragma once

// The alternative look of the ghost: a grey car with a rim in a dark version of the player's
// colour, made from the car's art by a distance transform.

#include "base/sdl_handles.h"

constexpr SDL_Color GHOST_OUTLINE_RED{118, 0, 3, 255};
constexpr SDL_Color GHOST_OUTLINE_BLUE{2, 25, 152, 255};

// A new surface owned by the caller; `outline` is the rim's width in pixels of `source`, which is
// not changed. Null if `source` is null or conversion fails.
SDL_Surface* ghost_transform(SDL_Surface* source, int outline, SDL_Color color);

// The ghost sprite of a car picture; empty on failure, silently.
TextureHandle ghost_make_texture(SDL_Renderer* renderer, char const* path, SDL_Color color);

// A black silhouette of all pixels whose alpha is above the threshold; null on failure.
SDL_Texture* make_silhouette_texture(SDL_Renderer* renderer, SDL_Surface* source,
                                     int alpha_threshold);

// Copies the whole texture into `box`, as large as its proportions allow, centred.
void draw_fitted(SDL_Renderer* renderer, SDL_Texture* texture, SDL_Rect const& box);
