#include "shell/winner_screen.h"

#include "base/screen.h"
#include "platform/present.h"
#include "render/overlays.h"

namespace {

bool wants_to_leave() {
    bool leave = false;
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        leave = leave || event.type == SDL_QUIT ||
                (event.type == SDL_KEYDOWN && event.key.keysym.scancode == SDL_SCANCODE_ESCAPE);
    }
    return leave;
}

} // namespace

void run_winner_screen(SDL_Renderer* renderer, Fonts const& fonts) {
    while (!wants_to_leave()) {
        SDL_SetRenderDrawColor(renderer, 38, 86, 50, 255);
        SDL_RenderClear(renderer);
        render_winner_overlay(renderer, {0, 0, HALF_SCREEN_W, SCREEN_H}, fonts, 255);
        render_divider(renderer, SCREEN_W, SCREEN_H);
        present_frame(renderer);
    }
}
