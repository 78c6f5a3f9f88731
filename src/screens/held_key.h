#pragma once

// Keys that leave a screen or change all of it act when they are pressed: a key that is still held
// from the screen before must not run through the next ones as well.

#include <SDL.h>

inline bool is_held_over(SDL_KeyboardEvent const& key) {
    if (key.repeat == 0) return false;
    switch (key.keysym.scancode) {
    case SDL_SCANCODE_ESCAPE:
    case SDL_SCANCODE_F11:
    case SDL_SCANCODE_RETURN:
    case SDL_SCANCODE_KP_ENTER:
    case SDL_SCANCODE_SPACE:
        return true;
    default:
        return false;
    }
}
