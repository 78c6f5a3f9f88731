#pragma once

// The help page: a keyboard with all its annotations, the players' names and a hint on how to
// drive. It scales from the output's height and from one key unit, in real pixels.

#include "screens/help_facts.h"

#include <SDL.h>
#include <SDL_ttf.h>

// Draws the page of ow x oh pixels over what the render target holds.
void draw_help_page(SDL_Renderer* renderer, int ow, int oh, HelpFacts const& facts = {});

// A name cut out of the page: face, shadow and a glint. `x` is the text's right edge if `right` is
// not 0, else its centre; `y` its top.
void draw_player_label(SDL_Renderer* renderer, TTF_Font* font, int x, int y, char const* text,
                       SDL_Color color, int right);

// How to drive, wrapped and centred on the page under a keyboard of `keyboard_w` pixels.
void draw_driving_hint(SDL_Renderer* renderer, int ow, int oh, int keyboard_w);
