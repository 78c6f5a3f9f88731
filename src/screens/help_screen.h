#pragma once

// The help screen: a drawn keyboard that points at every key. The page is costly to lay out, so it
// is drawn once into a texture of the output's size and only copied after that.

#include "base/sdl_handles.h"
#include "screens/help_facts.h"

// The page drawn last, and the output size that it was drawn for.
struct KeyboardTex {
    TextureHandle tex;
    int w = 0;
    int h = 0;
    int number = 1; // of the page: 1 the keyboard, 2 pads, switches and keys of one's own
};

// Draws and presents one frame, black at an `alpha` of 0 and in full strength at 1. W and H are the
// logical size of the renderer, which is put back at the end.
void render_help_screen(SDL_Renderer* renderer, int W, int H, KeyboardTex& page, float alpha,
                        HelpFacts const& facts = {});
