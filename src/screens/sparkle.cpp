#include "screens/sparkle.h"

#include "render/image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace {

constexpr int STAR_SIDE = 256;
constexpr std::uint32_t SPARKLE_MS = 3000;

// One axis of the star, -1..1 from edge to edge of the texture. Both rays are products of a
// function of the column and one of the row, so each is worked out once per column.
struct StarAxis {
    double at = 0.0;
    double across = 0.0; // a ray's profile across its length: very thin
    double along = 0.0;  // its strength along its length
};

std::array<StarAxis, STAR_SIDE> star_axis() {
    std::array<StarAxis, STAR_SIDE> axis{};
    for (int i = 0; i < STAR_SIDE; ++i) {
        double const u = (i - 127.5) / 127.5;
        double const taper = std::max(1.0 - std::abs(u), 0.0);
        axis[static_cast<std::size_t>(i)] = {u, std::exp(-u * u * 9000.0), taper * taper};
    }
    return axis;
}

std::uint32_t star_pixel(StarAxis const& column, StarAxis const& row) {
    double const core = std::exp(-(column.at * column.at + row.at * row.at) * 70.0);
    double const rays = row.across * column.along + column.across * row.along;
    auto const alpha = static_cast<std::uint32_t>(std::min(1.0, core + rays) * 255.0 + 0.5);
    return (alpha << 24U) | 0x00FFFFFFU;
}

// 0..1. The remainder keeps the range the same where rand() is wider than 15 bits.
double random_share() {
    return (std::rand() % 32768) / 32767.0;
}

Sparkle spawn(SparkleFx const& fx, int view_h, unsigned now) {
    SDL_Point const point = fx.points[static_cast<std::size_t>(std::rand()) % fx.points.size()];
    return {point.x, point.y, now, SPARKLE_MS,
            static_cast<float>((random_share() * 0.06 + 0.1) * view_h)};
}

} // namespace

TextureHandle make_sparkle_star(SDL_Renderer* renderer) {
    auto const axis = star_axis();
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(STAR_SIDE) * STAR_SIDE);
    for (StarAxis const& row : axis) {
        for (StarAxis const& column : axis) pixels.push_back(star_pixel(column, row));
    }
    TextureHandle star(
        SDL_CreateTexture(renderer, PIXEL_FORMAT, SDL_TEXTUREACCESS_STATIC, STAR_SIDE, STAR_SIDE));
    if (!star) return star;
    SDL_UpdateTexture(star.get(), nullptr, pixels.data(), STAR_SIDE * 4);
    SDL_SetTextureBlendMode(star.get(), SDL_BLENDMODE_ADD);
    SDL_SetTextureScaleMode(star.get(), SDL_ScaleModeLinear);
    return star;
}

void update_sparkles(SparkleFx& fx, int view_h, unsigned now) {
    std::erase_if(fx.sparkles, [now](Sparkle const& s) { return now - s.born_at >= s.life_ms; });
    if (now < fx.next_spawn_at || fx.points.empty()) return;
    fx.sparkles.push_back(spawn(fx, view_h, now));
    fx.next_spawn_at = now + SPARKLE_MS;
}

void draw_sparkles(SDL_Renderer* renderer, SparkleFx const& fx, int art_w, int art_h,
                   SDL_Rect const& rest, unsigned now) {
    if (!fx.star) return;
    for (Sparkle const& s : fx.sparkles) {
        float const t = static_cast<float>(now - s.born_at) / static_cast<float>(s.life_ms);
        float const swell = t <= 0.5F ? 2.0F * t : 2.0F * (1.0F - t);
        float const glow = swell * swell;
        int const side = static_cast<int>(s.size * glow);
        if (side <= 1) continue;
        SDL_SetTextureAlphaMod(fx.star.get(), static_cast<std::uint8_t>(glow * 255.0F));
        SDL_Rect const target{rest.x + s.x * rest.w / art_w - side / 2,
                              rest.y + s.y * rest.h / art_h - side / 2, side, side};
        SDL_RenderCopy(renderer, fx.star.get(), nullptr, &target);
    }
}
