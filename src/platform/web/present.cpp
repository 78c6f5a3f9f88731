#include "platform/present.h"

#include <emscripten.h>

// The page gets its time between two frames: the program sleeps here, with all that is on its
// stack, until the browser is about to draw the next one.
// What follows is JavaScript.
// clang-format off
EM_ASYNC_JS(void, wait_for_next_frame, (), {
    await new Promise((resolve) => requestAnimationFrame(resolve));
});
// clang-format on

void present_frame(SDL_Renderer* renderer) {
    SDL_RenderPresent(renderer);
    wait_for_next_frame();
}
