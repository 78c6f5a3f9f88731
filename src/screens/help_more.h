#pragma once

// The help's second page: pads, the menu's switches, the keys in force and how to have others.

#include "screens/help_facts.h"

#include <SDL.h>

// Draws the page of ow x oh pixels over what the render target holds.
void draw_help_more(SDL_Renderer* renderer, int ow, int oh, HelpFacts const& facts);

// At the foot of page `number`, 1 or 2: how to turn to the other.
void draw_page_turn(SDL_Renderer* renderer, int ow, int oh, int number);
