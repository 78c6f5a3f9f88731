#include "platform/present.h"

void present_frame(SDL_Renderer* renderer) {
    SDL_RenderPresent(renderer); // waits for the display by itself
}
