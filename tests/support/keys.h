#pragma once

// Events as SDL reports them.

#include <SDL.h>

inline SDL_Event key_event(SDL_Scancode code, bool repeated = false) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.repeat = repeated ? 1 : 0;
    event.key.keysym.scancode = code;
    event.key.keysym.sym = SDL_GetKeyFromScancode(code);
    return event;
}
