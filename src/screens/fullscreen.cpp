#include "screens/fullscreen.h"

void toggle_fullscreen(SDL_Window* window, bool& fullscreen) {
    fullscreen = !fullscreen;
    SDL_SetWindowFullscreen(window, fullscreen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
}
