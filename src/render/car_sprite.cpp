#include "render/car_sprite.h"

#include "render/image.h"
#include "render/view_settings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace {

// A car at zoom level 0, in logical pixels.
constexpr float CAR_WIDTH = 11.0F;
constexpr float CAR_LENGTH = 22.0F;
// A sprite holds twice the car's length in real pixels: enough for the zoom in use, small enough
// for the renderer's own filter.
constexpr int SPRITE_OVERSAMPLING = 2;
constexpr int SMALLEST_TARGET = 32;
constexpr int SHADOW_ALPHA = 110;
constexpr float SHADOW_DX = 1.0F;
constexpr float SHADOW_DY = 2.0F;

// Wanted length of a sprite's long side in pixels.
int target_length(SDL_Renderer* renderer) {
    int output_w = 0;
    int output_h = 0;
    int logical_w = 0;
    int logical_h = 0;
    if (SDL_GetRendererOutputSize(renderer, &output_w, &output_h) != 0) output_h = 0;
    SDL_RenderGetLogicalSize(renderer, &logical_w, &logical_h);
    double const length = SPRITE_OVERSAMPLING * static_cast<double>(CAR_LENGTH);
    if (output_h <= 0 || logical_h <= 0) return static_cast<int>(length);
    return std::max(SMALLEST_TARGET, static_cast<int>(std::lround(length * output_h / logical_h)));
}

int scaled(int length, int numerator, int denominator) {
    double const exact = static_cast<double>(length) * numerator / denominator;
    return std::max(1, static_cast<int>(std::lround(exact)));
}

// Size of the sprite for a picture of w x h: never larger than the picture.
SDL_Point sprite_size(int w, int h, int target) {
    if (w >= h) {
        int const out_w = std::min(target, w);
        return {out_w, scaled(out_w, h, w)};
    }
    int const out_h = std::min(target, h);
    return {scaled(out_h, w, h), out_h};
}

// `value` x `factor` / 255, rounded: the product of two opacities.
std::uint8_t opacity(int value, int factor) {
    return static_cast<std::uint8_t>((value * factor + 127) / 255);
}

void draw_sprite(SDL_Renderer* renderer, float x, float y, double heading, SDL_Texture* texture,
                 std::uint8_t alpha) {
    int texture_w = 0;
    int texture_h = 0;
    SDL_QueryTexture(texture, nullptr, nullptr, &texture_w, &texture_h);
    auto const k = static_cast<float>(zoom_factor() * CAR_MAGNIFIER);
    float const w = std::max(1.0F, std::round(CAR_WIDTH * k));
    float const h =
        texture_w > 0
            ? std::round(static_cast<float>(texture_h) * w / static_cast<float>(texture_w))
            : std::max(1.0F, std::round(CAR_LENGTH * k));
    SDL_FRect const car = {x - w * 0.5F, y - h * 0.5F, w, h};
    SDL_FRect const shadow = {car.x + SHADOW_DX, car.y + SHADOW_DY, w, h};
    // Sprites point up, a heading of 0 to the right.
    double const angle = heading * 180.0 / std::numbers::pi + 90.0;

    SDL_SetTextureColorMod(texture, 0, 0, 0);
    SDL_SetTextureAlphaMod(texture, opacity(alpha, SHADOW_ALPHA));
    SDL_RenderCopyExF(renderer, texture, nullptr, &shadow, angle, nullptr, SDL_FLIP_NONE);
    SDL_SetTextureColorMod(texture, 255, 255, 255);
    SDL_SetTextureAlphaMod(texture, alpha);
    SDL_RenderCopyExF(renderer, texture, nullptr, &car, angle, nullptr, SDL_FLIP_NONE);
    // Others draw the same texture: it must not keep this car's fade.
    SDL_SetTextureAlphaMod(texture, 255);
}

// A point of the drawn car: so many times half its length ahead of the middle, and so many times
// half its width to the left.
struct CarPoint {
    double ahead;
    double left;
};
using CarQuad = std::array<CarPoint, 4>;

constexpr CarQuad BODY = {{{-1.0, 1.0}, {1.0, 1.0}, {1.0, -1.0}, {-1.0, -1.0}}};
constexpr CarQuad NOSE = {{{0.2, 1.0}, {1.0, 0.6}, {1.0, -0.6}, {0.2, -1.0}}};
constexpr CarQuad CABIN = {{{-0.4, 0.55}, {0.1, 0.55}, {0.1, -0.55}, {-0.4, -0.55}}};

// The drawn car's middle and axes in pixels: half its length ahead, half its width to the left.
struct CarFrame {
    double x;
    double y;
    double ahead_x;
    double ahead_y;
    double left_x;
    double left_y;
};

void draw_quad(SDL_Renderer* renderer, CarFrame const& frame, CarQuad const& quad,
               SDL_Color color) {
    static constexpr std::array<int, 6> INDICES = {0, 1, 2, 0, 2, 3};
    std::array<SDL_Vertex, 4> vertices{};
    for (std::size_t i = 0; i < quad.size(); ++i) {
        CarPoint const& point = quad[i];
        double const dx = point.ahead * frame.ahead_x + point.left * frame.left_x;
        double const dy = point.ahead * frame.ahead_y + point.left * frame.left_y;
        vertices[i].position = {static_cast<float>(frame.x + dx), static_cast<float>(frame.y + dy)};
        vertices[i].color = color;
    }
    SDL_RenderGeometry(renderer, nullptr, vertices.data(), static_cast<int>(vertices.size()),
                       INDICES.data(), static_cast<int>(INDICES.size()));
}

SDL_Color halved(SDL_Color color) {
    return {static_cast<std::uint8_t>(color.r >> 1U), static_cast<std::uint8_t>(color.g >> 1U),
            static_cast<std::uint8_t>(color.b >> 1U), color.a};
}

void draw_plain_car(SDL_Renderer* renderer, double x, double y, double heading, SDL_Color body,
                    SDL_Color accent, std::uint8_t alpha) {
    double const k = zoom_factor() * CAR_MAGNIFIER;
    double const half_length = CAR_HALF_LENGTH * k;
    double const half_width = CAR_HALF_WIDTH * k;
    double const cosine = std::cos(heading);
    double const sine = std::sin(heading);
    CarFrame const frame = {
        x, y, half_length * cosine, half_length * sine, half_width * sine, -half_width * cosine};
    body.a = opacity(body.a, alpha);
    accent.a = opacity(accent.a, alpha);
    draw_quad(renderer, frame, BODY, body);
    draw_quad(renderer, frame, NOSE, accent);
    draw_quad(renderer, frame, CABIN, halved(body));
}

} // namespace

TextureHandle load_car_texture(SDL_Renderer* renderer, char const* path) {
    SurfaceHandle const picture = load_picture(path);
    return car_texture_from_surface(renderer, picture.get());
}

TextureHandle car_texture_from_surface(SDL_Renderer* renderer, SDL_Surface* surface) {
    if (surface == nullptr || surface->w < 1 || surface->h < 1) return {};
    SDL_Point const size = sprite_size(surface->w, surface->h, target_length(renderer));
    SurfaceHandle reduced;
    if (size.x != surface->w || size.y != surface->h) {
        reduced.reset(downscale_box(surface, size.x, size.y));
        if (!reduced) return {};
        surface = reduced.get();
    }
    TextureHandle texture(SDL_CreateTextureFromSurface(renderer, surface));
    if (texture) {
        SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
        SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
    }
    return texture;
}

void draw_car_at(SDL_Renderer* renderer, float x, float y, double heading, SDL_Texture* texture,
                 SDL_Color body, SDL_Color accent, std::uint8_t alpha) {
    if (texture != nullptr) {
        draw_sprite(renderer, x, y, heading, texture, alpha);
    } else {
        draw_plain_car(renderer, static_cast<double>(x), static_cast<double>(y), heading, body,
                       accent, alpha);
    }
}
