#include "screens/help_screen.h"

#include "platform/present.h"
#include "screens/help_more.h"
#include "screens/help_page.h"
#include "screens/night_sky.h"

#include <algorithm>

namespace {

void draw_gradient(SDL_Renderer* renderer, int ow, int oh) {
    for (int y = 0; y < oh; ++y) {
        SDL_Color const sky = night_sky(oh > 1 ? static_cast<double>(y) / (oh - 1) : 0.0);
        SDL_SetRenderDrawColor(renderer, sky.r, sky.g, sky.b, sky.a);
        SDL_RenderDrawLine(renderer, 0, y, ow - 1, y);
    }
}

// Empty if the texture cannot be made or drawn into.
KeyboardTex draw_page(SDL_Renderer* renderer, int ow, int oh, int number, HelpFacts const& facts) {
    TextureHandle texture(
        SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA8888, SDL_TEXTUREACCESS_TARGET, ow, oh));
    if (!texture) return {};
    SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
    SDL_Texture* const before = SDL_GetRenderTarget(renderer);
    if (SDL_SetRenderTarget(renderer, texture.get()) != 0) return {};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
    SDL_RenderClear(renderer);
    if (number == 1) {
        draw_help_page(renderer, ow, oh, facts);
    } else {
        draw_help_more(renderer, ow, oh, facts);
    }
    SDL_SetRenderTarget(renderer, before);
    return {std::move(texture), ow, oh, number};
}

void draw_fade(SDL_Renderer* renderer, float alpha) {
    float const k = 1.0F - std::clamp(alpha, 0.0F, 1.0F);
    if (k <= 0.0F) return;
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, static_cast<std::uint8_t>(k * 255.0F));
    SDL_RenderFillRect(renderer, nullptr);
}

} // namespace

void render_help_screen(SDL_Renderer* renderer, int W, int H, KeyboardTex& page, float alpha,
                        HelpFacts const& facts) {
    int ow = 0;
    int oh = 0;
    SDL_GetRendererOutputSize(renderer, &ow, &oh);
    SDL_RenderSetLogicalSize(renderer, 0, 0);
    SDL_SetRenderDrawColor(renderer, 6, 10, 32, 255);
    SDL_RenderClear(renderer);
    draw_gradient(renderer, ow, oh);
    if (!page.tex || page.w != ow || page.h != oh) {
        int const number = page.number;
        page = {}; // never two pages at once
        page = draw_page(renderer, ow, oh, number, facts);
        page.number = number;
    }
    if (page.tex) SDL_RenderCopy(renderer, page.tex.get(), nullptr, nullptr);
    draw_fade(renderer, alpha);
    present_frame(renderer);
    SDL_RenderSetLogicalSize(renderer, W, H);
}
