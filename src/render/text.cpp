#include "render/text.h"

#include "base/fonts.h"
#include "render/colors.h"
#include "render/image.h"
#include "render/rendered_text.h"
#include "render/second_face.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr int SHADOW_OFFSET = 2; // logical pixels right and down
constexpr int WORD_OUTLINE = 2;  // logical pixels

constexpr int EMBOSS_SHADOW_ALPHA = 110;

// The slope of a letter's rim at a pixel, in 255ths: positive where it faces the light at the upper
// right, negative where it faces away.
class Relief {
public:
    Relief(SDL_Surface* surface, int depth) : surface_(surface), depth_(depth) {}

    [[nodiscard]] int at(int x, int y) const {
        return alpha(x - depth_, y + depth_) - alpha(x + depth_, y - depth_);
    }
    [[nodiscard]] int alpha(int x, int y) const {
        if (x < 0 || y < 0 || x >= surface_->w || y >= surface_->h) return 0;
        SDL_PixelFormat const& format = *surface_->format;
        return static_cast<int>((pixel_row(surface_, y)[x] & format.Amask) >> format.Ashift);
    }

private:
    SDL_Surface* surface_;
    int depth_;
};

// From `fill` towards `light` for a positive relief, towards `dark` for a negative one.
std::uint8_t shade(int relief, std::uint8_t fill, std::uint8_t light, std::uint8_t dark) {
    int const other = relief >= 0 ? light : dark;
    return static_cast<std::uint8_t>(fill + (other - fill) * std::abs(relief) / 255);
}

// Gives white text the colours of metal; alpha stays.
void recolour(SDL_Surface* surface, int depth, RGB fill, RGB light, RGB dark) {
    PixelLock const lock(surface);
    if (!lock) return; // white words are better than none
    Relief const relief(surface, depth);
    for (int y = 0; y < surface->h; ++y) {
        std::uint32_t* row = pixel_row(surface, y);
        for (int x = 0; x < surface->w; ++x) {
            int const alpha = relief.alpha(x, y);
            if (alpha == 0) continue;
            int const s = relief.at(x, y);
            row[x] =
                SDL_MapRGBA(surface->format, shade(s, fill.r, light.r, dark.r),
                            shade(s, fill.g, light.g, dark.g), shade(s, fill.b, light.b, dark.b),
                            static_cast<std::uint8_t>(alpha));
        }
    }
}

void copy_at(SDL_Renderer* renderer, SDL_Texture* texture, SDL_Rect const& place, int dx, int dy) {
    SDL_Rect const moved = {place.x + dx, place.y + dy, place.w, place.h};
    SDL_RenderCopy(renderer, texture, nullptr, &moved);
}

// Drop shadow and outline: black copies of the text, the outline in all eight directions.
void draw_backing(SDL_Renderer* renderer, SDL_Texture* texture, SDL_Rect const& place, int offset,
                  std::uint8_t alpha) {
    SDL_SetTextureColorMod(texture, 0, 0, 0);
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
    SDL_SetTextureAlphaMod(texture, static_cast<std::uint8_t>(alpha * EMBOSS_SHADOW_ALPHA / 255));
    copy_at(renderer, texture, place, 2 * offset, 2 * offset);
    SDL_SetTextureAlphaMod(texture, alpha);
    for (int j = -1; j <= 1; ++j) {
        for (int i = -1; i <= 1; ++i) {
            if (i != 0 || j != 0) copy_at(renderer, texture, place, i * offset, j * offset);
        }
    }
}

// Time text fits 16 bytes whatever the number: 4294967 seconds have 7 digits.
using TimeText = std::array<char, 16>;

} // namespace

double text_scale(Fonts const& fonts) {
    return fonts.phys_scale > 0.0 ? fonts.phys_scale : 1.0;
}

bool measure_text(TTF_Font* font, double scale, char const* text, int* w, int* h) {
    *w = 0;
    *h = 0;
    if (!size_in_faces(font, text, w, h)) {
        *w = 0;
        *h = 0;
        return false;
    }
    *w = to_logical(*w, scale);
    *h = to_logical(*h, scale);
    return true;
}

void draw_ttf(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x, int y,
              SDL_Color color, int* out_w, int* out_h, std::uint8_t alpha) {
    if (out_w != nullptr) *out_w = 0;
    if (out_h != nullptr) *out_h = 0;
    RenderedText const line = render_text(renderer, font, text, color);
    if (!line.tex) return;
    if (alpha < 255) {
        SDL_SetTextureBlendMode(line.tex.get(), SDL_BLENDMODE_BLEND);
        SDL_SetTextureAlphaMod(line.tex.get(), alpha);
    }
    SDL_Rect const place = {x, y, to_logical(line.w, scale), to_logical(line.h, scale)};
    SDL_RenderCopy(renderer, line.tex.get(), nullptr, &place);
    if (out_w != nullptr) *out_w = place.w;
    if (out_h != nullptr) *out_h = place.h;
}

void draw_with_shadow(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x,
                      int y, SDL_Color color, std::uint8_t alpha, std::uint8_t shadow_alpha) {
    RenderedText const line = render_text(renderer, font, text, WHITE);
    if (!line.tex) return;
    SDL_Rect const place = {x, y, to_logical(line.w, scale), to_logical(line.h, scale)};
    SDL_Texture* const texture = line.tex.get();
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
    SDL_SetTextureColorMod(texture, 0, 0, 0);
    SDL_SetTextureAlphaMod(texture, shadow_alpha);
    copy_at(renderer, texture, place, SHADOW_OFFSET, SHADOW_OFFSET);
    SDL_SetTextureColorMod(texture, color.r, color.g, color.b);
    SDL_SetTextureAlphaMod(texture, alpha);
    copy_at(renderer, texture, place, 0, 0);
}

void draw_outlined(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x,
                   int y, SDL_Color color, std::uint8_t alpha) {
    RenderedText const line = render_text(renderer, font, text, WHITE);
    if (!line.tex) return;
    SDL_Rect const place = {x, y, to_logical(line.w, scale), to_logical(line.h, scale)};
    // The outline's copies add up to far more than one: at `alpha` they would turn a fading word
    // black before it goes.
    int const faint = alpha * alpha * alpha / (255 * 255);
    draw_backing(renderer, line.tex.get(), place, WORD_OUTLINE, static_cast<std::uint8_t>(faint));
    SDL_SetTextureColorMod(line.tex.get(), color.r, color.g, color.b);
    SDL_SetTextureAlphaMod(line.tex.get(), alpha);
    copy_at(renderer, line.tex.get(), place, 0, 0);
}

void draw_embossed(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x,
                   int y, RGB fill, RGB light, RGB dark, std::uint8_t alpha) {
    if (font == nullptr || alpha == 0) return;
    SurfaceHandle const surface(TTF_RenderUTF8_Blended(font, text, WHITE));
    if (!surface) return;
    TextureHandle const outline(SDL_CreateTextureFromSurface(renderer, surface.get()));
    SDL_Rect const place = {x, y, to_logical(surface->w, scale), to_logical(surface->h, scale)};
    // The bevel is as deep in real pixels as the outline is wide in logical ones.
    recolour(surface.get(), std::max(2, static_cast<int>(std::lround(2.0 * scale))), fill, light,
             dark);
    TextureHandle const face(SDL_CreateTextureFromSurface(renderer, surface.get()));
    if (outline) {
        int const offset =
            scale > 0.0 ? std::max(2, static_cast<int>(std::lround(4.0 / scale))) : 4;
        draw_backing(renderer, outline.get(), place, offset, alpha);
    }
    if (face) {
        SDL_SetTextureBlendMode(face.get(), SDL_BLENDMODE_BLEND);
        SDL_SetTextureAlphaMod(face.get(), alpha);
        copy_at(renderer, face.get(), place, 0, 0);
    }
}

std::string format_time_short(unsigned ms) {
    unsigned const t = ms + 5;
    TimeText text{};
    std::snprintf(text.data(), text.size(), "%u.%02u", t / 1000, t / 10 % 100);
    return text.data();
}

std::string format_time_long(unsigned ms) {
    unsigned const t = ms + 5;
    if (t < 60000) return format_time_short(ms);
    TimeText text{};
    std::snprintf(text.data(), text.size(), "%u:%02u.%02u", t / 60000, t / 1000 % 60, t / 10 % 100);
    return text.data();
}
