#include "race/game_loop.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int TOAST_X = 640;
constexpr int TOAST_Y = 216;
constexpr std::uint32_t TOAST_MS = 1000;
constexpr float TOAST_FADE_MS = 200.0F;

// A line of text as a texture, with its size in logical pixels.
struct TextLine {
    TextureHandle texture;
    int w = 0;
    int h = 0;
};

TextLine render_line(GameLoop const& g, TTF_Font* font, char const* text, SDL_Color color) {
    TextLine line;
    SurfaceHandle const surface(TTF_RenderUTF8_Blended(font, text, color));
    if (!surface) return line;
    line.texture.reset(SDL_CreateTextureFromSurface(g.renderer, surface.get()));
    line.w = static_cast<int>(std::lround(surface->w / g.phys_scale));
    line.h = static_cast<int>(std::lround(surface->h / g.phys_scale));
    return line;
}

void copy_line(GameLoop const& g, TextLine const& line, int x, int y) {
    SDL_Rect const target{x, y, line.w, line.h};
    SDL_RenderCopy(g.renderer, line.texture.get(), nullptr, &target);
}

} // namespace

void GameLoop::show_toast(char const* text) {
    toast_text = text;
    toast_until = SDL_GetTicks() + TOAST_MS;
}

void GameLoop::draw_toast(char const* text, unsigned now) {
    TTF_Font* font = fonts.record != nullptr ? fonts.record : fonts.hud_time;
    if (font == nullptr) return;
    TextLine const line = render_line(*this, font, text, {255, 220, 110, 255});
    if (!line.texture) return;

    float const strength = std::min(static_cast<float>(toast_until - now) / TOAST_FADE_MS, 1.0F);
    int const x = TOAST_X - line.w / 2;
    int const y = TOAST_Y - line.h / 2;
    SDL_SetTextureBlendMode(line.texture.get(), SDL_BLENDMODE_BLEND);
    SDL_SetTextureColorMod(line.texture.get(), 0, 0, 0);
    SDL_SetTextureAlphaMod(line.texture.get(), static_cast<std::uint8_t>(170.0F * strength));
    copy_line(*this, line, x + 3, y + 3);
    SDL_SetTextureColorMod(line.texture.get(), 255, 255, 255);
    SDL_SetTextureAlphaMod(line.texture.get(), static_cast<std::uint8_t>(255.0F * strength));
    copy_line(*this, line, x, y);
}

void GameLoop::draw_osd(TTF_Font* font, char const* text, int x, int y, SDL_Color color) {
    if (font == nullptr || text == nullptr || *text == '\0') return;
    TextLine const line = render_line(*this, font, text, color);
    if (line.texture) copy_line(*this, line, x, y);
}
