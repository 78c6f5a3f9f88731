#include "platform/present.h"

#include <emscripten.h>

// The page gets its time between two frames: the program sleeps here, with all that is on its
// stack, until the browser is about to draw the next one.
EM_ASYNC_JS(void, wait_for_next_frame, (), { await Module.nextFrame(); });

void present_frame(SDL_Renderer* renderer) {
    SDL_RenderPresent(renderer);
    wait_for_next_frame();
}
