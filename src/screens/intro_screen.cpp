#include "screens/intro_screen.h"

#include "audio/audio.h"
#include "base/screen.h"
#include "input/pads.h"
#include "render/image.h"
#include "render/overlays.h"
#include "screens/fullscreen.h"
#include "screens/held_key.h"
#include "screens/menu_music.h"

#include <cstdio>

namespace {

constexpr char const* PAD_HINT = "A  start      B  leave the game      X  full screen";

struct Intro {
    TextureHandle picture; // null if it did not load
    int picture_w = 0;
    int picture_h = 0;
    int w = 0; // logical size
    int h = 0;
    bool going = true;
    bool started = false;
};

void measure_screen(SDL_Renderer* renderer, Intro& intro) {
    SDL_RenderGetLogicalSize(renderer, &intro.w, &intro.h);
    if (intro.w <= 0) intro.w = SCREEN_W;
    if (intro.h <= 0) intro.h = SCREEN_H;
}

void load_intro_picture(SDL_Renderer* renderer, Intro& intro) {
    intro.picture = load_texture(renderer, "art/intro.png", &intro.picture_w, &intro.picture_h);
    if (!intro.picture) {
        std::fprintf(stderr, "intro image: %s\n", SDL_GetError());
        return;
    }
    // It is as large as the largest usual screen: on a smaller one its edges would be stairs.
    SDL_SetTextureScaleMode(intro.picture.get(), SDL_ScaleModeLinear);
}

void answer(Intro& intro, bool start) {
    intro.started = intro.started || start;
    intro.going = false;
}

void handle_key(Intro& intro, SDL_Scancode key, SDL_Window* window, bool& fullscreen) {
    if (key == SDL_SCANCODE_ESCAPE) answer(intro, false);
    if (key == SDL_SCANCODE_SPACE) answer(intro, true);
    if (key == SDL_SCANCODE_F11) toggle_fullscreen(window, fullscreen);
}

void handle_event(Intro& intro, SDL_Event const& event, SDL_Window* window, bool& fullscreen) {
    if (event.type == SDL_QUIT) answer(intro, false);
    if (event.type == SDL_MOUSEBUTTONDOWN) answer(intro, true);
    if (event.type == SDL_KEYDOWN && !is_held_over(event.key)) {
        handle_key(intro, event.key.keysym.scancode, window, fullscreen);
    }
}

// B is Escape here and X is F11, as on the menu; any other button goes on.
void handle_pad(Intro& intro, PadButton button, SDL_Window* window, bool& fullscreen) {
    if (button == PadButton::B) answer(intro, false);
    if (button == PadButton::A || button == PadButton::Start) answer(intro, true);
    if (button == PadButton::X) toggle_fullscreen(window, fullscreen);
}

} // namespace

bool run_intro_screen(SDL_Window* window, SDL_Renderer* renderer, Audio& audio, Fonts const& fonts,
                      bool& fullscreen, Pads* pads) {
    Intro intro;
    measure_screen(renderer, intro);
    load_intro_picture(renderer, intro);
    start_menu_music(audio);
    do {
        intro.going = true;
        SDL_Event event;
        while (SDL_PollEvent(&event) != 0) {
            handle_event(intro, event, window, fullscreen);
            if (pads == nullptr) continue;
            if (auto const press = pads->handle(event, SDL_GetTicks())) {
                handle_pad(intro, press->button, window, fullscreen);
            }
        }
        render_intro(renderer, intro.picture.get(), intro.picture_w, intro.picture_h, intro.w,
                     intro.h, fonts, SDL_GetTicks(),
                     pads != nullptr && pads->in_use() ? PAD_HINT : nullptr);
    } while (intro.going);
    if (!intro.started) audio.music_playing = false;
    return intro.started;
}
