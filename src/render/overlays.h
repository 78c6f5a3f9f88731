#pragma once

// The big words over the race picture, the line between the views, and the intro's frame. Each is
// stateless: what shows follows from the view's fields and the clock that the caller hands in.

#include "base/fonts.h"
#include "base/player.h"

#include <cstdint>

// `rect` is the player's viewport in logical pixels, `width` x `height` the whole screen's size,
// `now` the frame's SDL_GetTicks, and `alpha` 0 to 255.

// The time of the lap just completed and what it beat, for as long as the view's fields say.
void render_lap_overlay(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                        Fonts const& fonts, unsigned now);
// "Last Lap", twice, at the start of the last one.
void render_last_lap_flash(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                           Fonts const& fonts, unsigned now);
// The black line between the views of a split screen.
void render_divider(SDL_Renderer* renderer, int width, int height);
void render_winner_overlay(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                           std::uint8_t alpha);
// Everything below the bars goes dark behind the words. `fade` is the strength of it, 0 to 1.
void render_game_over(SDL_Renderer* renderer, int width, int height, Fonts const& fonts,
                      float fade);
// A whole frame of the intro, cleared and presented. `picture` of `picture_w` x `picture_h` pixels
// may be null, and so may `hint`, a small line at the foot.
void render_intro(SDL_Renderer* renderer, SDL_Texture* picture, int picture_w, int picture_h,
                  int width, int height, Fonts const& fonts, unsigned now,
                  char const* hint = nullptr);
