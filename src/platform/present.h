#pragma once

#include <SDL.h>

// Shows what has been drawn, and returns when the next frame may be drawn: paced by the display.
void present_frame(SDL_Renderer* renderer);
