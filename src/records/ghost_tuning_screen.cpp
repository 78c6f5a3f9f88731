#include "records/ghost_tuning_screen.h"

#include "base/car_size.h"
#include "platform/present.h"
#include "records/ghost_sprite.h"
#include "render/car_sprite.h"
#include "render/image.h"
#include "render/view_settings.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int WIDEST_OUTLINE = 200; // pixels of the art
constexpr int THRESHOLD_STEP = 4;
// Width of a car in a race, in logical pixels at zoom 0.
constexpr double GHOST_WIDTH = 2.0 * CAR_HALF_WIDTH * CAR_MAGNIFIER;

// One player's art and what is made of it. All empty if the art did not load.
struct GhostArt {
    SDL_Color color{};
    SurfaceHandle picture;
    TextureHandle ghost;
    TextureHandle silhouette;
};

struct TuningScreen {
    SDL_Renderer* renderer = nullptr;
    std::array<GhostArt, 2> arts; // red, blue
    int outline = 35;
    int threshold = 0;
    bool silhouettes = false; // shown in place of the ghosts
    bool done = false;
    bool quit = false;
};

TextureHandle make_ghost(TuningScreen const& screen, GhostArt const& art) {
    SurfaceHandle const ghost(ghost_transform(art.picture.get(), screen.outline, art.color));
    if (!ghost) return {};
    TextureHandle texture(SDL_CreateTextureFromSurface(screen.renderer, ghost.get()));
    if (!texture) return {};
    SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
    SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
    SDL_SetTextureAlphaMod(texture.get(), GHOST_ALPHA);
    return texture;
}

void rebuild_ghosts(TuningScreen& screen) {
    for (GhostArt& art : screen.arts) art.ghost = make_ghost(screen, art);
}

void rebuild_silhouettes(TuningScreen& screen) {
    for (GhostArt& art : screen.arts) {
        art.silhouette.reset(
            make_silhouette_texture(screen.renderer, art.picture.get(), screen.threshold));
    }
}

void print_outline(TuningScreen const& screen) {
    std::printf("outline K = %d px\n", screen.outline);
    std::fflush(stdout);
}

void print_threshold(TuningScreen const& screen) {
    std::printf("alpha threshold = %d (alpha <= %d is transparent)\n", screen.threshold,
                screen.threshold);
    std::fflush(stdout);
}

void change_outline(TuningScreen& screen, int step) {
    int const outline = std::clamp(screen.outline + step, 0, WIDEST_OUTLINE);
    if (outline == screen.outline) return;
    screen.outline = outline;
    rebuild_ghosts(screen);
    print_outline(screen);
}

void change_threshold(TuningScreen& screen, int step) {
    int const threshold = std::clamp(screen.threshold + step, 0, 255);
    if (threshold == screen.threshold) return;
    screen.threshold = threshold;
    rebuild_silhouettes(screen);
    print_threshold(screen);
}

void handle_key(TuningScreen& screen, SDL_Scancode key) {
    switch (key) {
    case SDL_SCANCODE_ESCAPE:
        screen.done = true;
        break;
    case SDL_SCANCODE_A:
        screen.silhouettes = !screen.silhouettes;
        break;
    case SDL_SCANCODE_UP:
        change_threshold(screen, THRESHOLD_STEP);
        break;
    case SDL_SCANCODE_DOWN:
        change_threshold(screen, -THRESHOLD_STEP);
        break;
    case SDL_SCANCODE_RIGHT:
        change_outline(screen, 1);
        break;
    case SDL_SCANCODE_LEFT:
        change_outline(screen, -1);
        break;
    default:
        break;
    }
}

void handle_events(TuningScreen& screen) {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) screen.done = screen.quit = true;
        if (event.type == SDL_KEYDOWN) handle_key(screen, event.key.keysym.scancode);
    }
}

// The logical size, or the output's if there is none.
SDL_Point render_size(SDL_Renderer* renderer) {
    SDL_Point size{};
    SDL_RenderGetLogicalSize(renderer, &size.x, &size.y);
    if (size.x <= 0 || size.y <= 0) SDL_GetRendererOutputSize(renderer, &size.x, &size.y);
    return size;
}

// The whole texture `w` wide, with its proportions, centred on (x, y).
void draw_preview(SDL_Renderer* renderer, SDL_Texture* texture, float x, float y, float w) {
    int tw = 0;
    int th = 0;
    SDL_QueryTexture(texture, nullptr, nullptr, &tw, &th);
    if (tw <= 0 || th <= 0) return;
    float const h = w * static_cast<float>(th) / static_cast<float>(tw);
    SDL_FRect const place{x - w / 2.0F, y - h / 2.0F, w, h};
    SDL_RenderCopyF(renderer, texture, nullptr, &place);
}

// As large as it fits into the art's half of the screen, and below that as large as in a race and
// twice that.
void draw_art(TuningScreen const& screen, GhostArt const& art, SDL_Point size, int column) {
    SDL_Texture* const texture = (screen.silhouettes ? art.silhouette : art.ghost).get();
    if (texture == nullptr) return;
    int const half = size.x / 2;
    draw_fitted(screen.renderer, texture, {column * half + 40, 20, half - 80, size.y - 160});
    auto const s = static_cast<float>(GHOST_WIDTH * zoom_factor());
    float const center = static_cast<float>(half) * (static_cast<float>(column) + 0.5F);
    auto const y = static_cast<float>(size.y - 60);
    draw_preview(screen.renderer, texture, center - 2.0F * s, y, s);
    draw_preview(screen.renderer, texture, center + 2.0F * s, y, 2.0F * s);
}

void draw_frame(TuningScreen const& screen, SDL_Point size) {
    SDL_SetRenderDrawColor(screen.renderer, 115, 115, 115, 255);
    SDL_RenderClear(screen.renderer);
    draw_art(screen, screen.arts[0], size, 0);
    draw_art(screen, screen.arts[1], size, 1);
    present_frame(screen.renderer);
}

} // namespace

bool run_test_ghost(SDL_Window* /*window*/, SDL_Renderer* renderer) {
    SDL_Point const size = render_size(renderer);
    TuningScreen screen;
    screen.renderer = renderer;
    screen.arts[0] = {GHOST_OUTLINE_RED, load_picture("art/red4.png"), {}, {}};
    screen.arts[1] = {GHOST_OUTLINE_BLUE, load_picture("art/blue4.png"), {}, {}};
    rebuild_ghosts(screen);
    rebuild_silhouettes(screen);
    print_outline(screen);
    print_threshold(screen);
    while (!screen.done) {
        handle_events(screen);
        draw_frame(screen, size);
    }
    return !screen.quit;
}
