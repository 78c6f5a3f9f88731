#include "prove/stage.h"

#include "prove/actor.h"
#include "prove/monkey.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr Uint32 FRAME_MS = 50;

Uint32 now = 1000; // SDL_GetTicks

void act() {
    Backstage const backstage;
    static bool const has_monkey = std::getenv("BRINDLE_MONKEY") != nullptr;
    if (has_monkey) {
        monkey_frame();
    } else {
        actor_frame();
    }
}

int (*program_main)(int, char**, char**) = nullptr;

int staged_main(int argc, char** argv, char** environment) {
    start_counting_calls();
    return program_main(argc, argv, environment);
}

} // namespace

SDL_Point forced_size(SDL_Point size) {
    char const* const text = std::getenv("BRINDLE_SIZE");
    if (text != nullptr) std::sscanf(text, "%d %d", &size.x, &size.y);
    return size;
}

extern "C" {

int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv, void (*init)(),
                      void (*fini)(), void (*rtld_fini)(), void* stack_end) {
    program_main = main;
    return original<decltype(__libc_start_main)>("__libc_start_main")(staged_main, argc, argv, init,
                                                                      fini, rtld_fini, stack_end);
}

Uint32 SDL_GetTicks() {
    return now;
}

void SDL_Delay(Uint32 ms) {
    now += ms;
}

// A frame ends when the program has read all its events.
int SDL_PollEvent(SDL_Event* event) {
    static auto* const real = original<decltype(SDL_PollEvent)>("SDL_PollEvent");
    static bool drained = true;
    if (drained) act();
    int const more = real(event);
    drained = more == 0;
    if (drained) now += FRAME_MS;
    return more;
}

// Nobody waits for a display.
void SDL_RenderPresent(SDL_Renderer* renderer) {
    static auto* const real = original<decltype(SDL_RenderPresent)>("SDL_RenderPresent");
    static bool const unsynced = SDL_RenderSetVSync(renderer, 0) == 0;
    static_cast<void>(unsynced);
    real(renderer);
}

void SDL_SetWindowSize(SDL_Window* window, int w, int h) {
    SDL_Point const size = forced_size({w, h});
    original<decltype(SDL_SetWindowSize)>("SDL_SetWindowSize")(window, size.x, size.y);
}

Uint8 const* SDL_GetKeyboardState(int* count) {
    if (count != nullptr) *count = SDL_NUM_SCANCODES;
    return keys_held();
}
}
