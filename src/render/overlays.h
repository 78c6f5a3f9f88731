#pragma once

// The big words over the race picture, the line between the views, and the intro's frame. Each is
// stateless: what shows follows from the view's fields and the clock that the caller hands in.

#include "race/player.h"
#include "shell/fonts.h"

#include <cstdint>

void render_lap_overlay(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                        Fonts const& fonts, unsigned now);
void render_last_lap_flash(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                           Fonts const& fonts, unsigned now);
void render_divider(SDL_Renderer* renderer, int width, int height);
void render_winner_overlay(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                           std::uint8_t alpha);
// `fade` is the screen's strength, 0..1.
void render_game_over(SDL_Renderer* renderer, int width, int height, Fonts const& fonts,
                      float fade);
// A whole frame of the intro, cleared and presented.
void render_intro(SDL_Renderer* renderer, SDL_Texture* picture, int picture_w, int picture_h,
                  int width, int height, Fonts const& fonts, unsigned now);
