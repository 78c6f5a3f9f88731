#pragma once

// What points at the keys of the help page: highlights, leaders at 45 degrees, captions. `rect` is
// the keyboard's place and `unit` its key unit in pixels; without a font there are no captions.

#include "screens/keyboard_layout.h"

#include <SDL.h>
#include <SDL_ttf.h>

constexpr SDL_Color RED_TINT{235, 95, 85, 255};
constexpr SDL_Color BLUE_TINT{125, 150, 255, 255};

// A player's keys: the leaders run down from the keys to the column `anchor`, and the captions
// stand on its left (`text_left`) or its right.
void draw_anno_group(SDL_Renderer* renderer, SDL_Rect const& rect, double unit, int inset,
                     int radius, int thick, TTF_Font* font, int line_h, Anno const* annos,
                     int count, bool text_left, int anchor);

// The race keys: each annotation says where its leader goes and how its caption stands.
void draw_major_group(SDL_Renderer* renderer, SDL_Rect const& rect, double unit, int inset,
                      int radius, int thick, TTF_Font* font, int line_h, Anno const* annos,
                      int count);
