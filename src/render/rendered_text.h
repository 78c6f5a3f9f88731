#pragma once

// A line of text that has been rendered, ready to be copied to the screen as often as one likes.

#include "base/sdl_handles.h"

struct RenderedText {
    TextureHandle tex; // null if there is nothing to show
    int w = 0;         // pixels of the texture; 0 without one
    int h = 0;
};

// Nothing for a null font, an empty text or a failure, silently.
RenderedText render_text(SDL_Renderer* renderer, TTF_Font* font, char const* text, SDL_Color color);

// Logical pixels for `pixels` of a text that was rendered at `scale` pixels per logical one.
int to_logical(int pixels, double scale);
