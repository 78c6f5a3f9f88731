#include "platform/mouse.h"

#include <SDL.h>

void take_mouse_for_menu() {
    SDL_SetRelativeMouseMode(SDL_TRUE);
}

void put_mouse_aside_for_race() {
    SDL_SetRelativeMouseMode(SDL_TRUE);
}
