#include "base/screen.h"
#include "race/game_loop.h"
#include "render/rendered_text.h"

#include <SDL.h>

#include <algorithm>

namespace {

constexpr int TOAST_X = HALF_SCREEN_W;
constexpr int TOAST_Y = 216;
constexpr float TOAST_FADE_MS = 200.0F;

void copy_line(GameLoop const& g, RenderedText const& line, int x, int y) {
    SDL_Rect const target{x, y, to_logical(line.w, g.phys_scale), to_logical(line.h, g.phys_scale)};
    SDL_RenderCopy(g.renderer, line.tex.get(), nullptr, &target);
}

} // namespace

void GameLoop::show_toast(char const* text, std::uint32_t ms) {
    toast_text = text;
    toast_until = SDL_GetTicks() + ms;
}

void GameLoop::draw_toast(char const* text, unsigned now) {
    TTF_Font* font = fonts.record != nullptr ? fonts.record : fonts.hud_time;
    if (font == nullptr) return;
    RenderedText const line = render_text(renderer, font, text, {255, 220, 110, 255});
    if (!line.tex) return;

    float const strength = std::min(static_cast<float>(toast_until - now) / TOAST_FADE_MS, 1.0F);
    int const x = TOAST_X - to_logical(line.w, phys_scale) / 2;
    int const y = TOAST_Y - to_logical(line.h, phys_scale) / 2;
    SDL_SetTextureBlendMode(line.tex.get(), SDL_BLENDMODE_BLEND);
    SDL_SetTextureColorMod(line.tex.get(), 0, 0, 0);
    SDL_SetTextureAlphaMod(line.tex.get(), static_cast<std::uint8_t>(170.0F * strength));
    copy_line(*this, line, x + 3, y + 3);
    SDL_SetTextureColorMod(line.tex.get(), 255, 255, 255);
    SDL_SetTextureAlphaMod(line.tex.get(), static_cast<std::uint8_t>(255.0F * strength));
    copy_line(*this, line, x, y);
}

void GameLoop::draw_osd(TTF_Font* font, char const* text, int x, int y, SDL_Color color) {
    RenderedText const line = render_text(renderer, font, text, color);
    if (line.tex) copy_line(*this, line, x, y);
}
