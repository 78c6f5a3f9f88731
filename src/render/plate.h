#pragma once

// Plates of dark glass behind words, so that these can be read over ground of any colour.

#include <SDL.h>

struct PlateLook {
    float radius; // of its corners, logical pixels
    SDL_Color glass;
    SDL_Color rim; // a line along the inside of its edge; alpha 0 for none
};

// Its corners are as round as the screen's pixels allow, whatever the logical size.
void draw_plate(SDL_Renderer* renderer, SDL_Rect const& rect, PlateLook const& look);
