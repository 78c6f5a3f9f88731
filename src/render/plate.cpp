#include "render/plate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace {

constexpr std::size_t CORNER_POINTS = 5; // off the arc by 2 % of its radius
constexpr std::size_t OUTLINE_POINTS = 4 * CORNER_POINTS;
constexpr float RIM_WIDTH = 1.0F; // logical pixels

using Outline = std::array<SDL_FPoint, OUTLINE_POINTS>;

// Clockwise from the upper left corner, `inset` within the rectangle.
Outline outline_of(SDL_Rect const& rect, float radius, float inset) {
    float const right = static_cast<float>(rect.x + rect.w) - radius;
    float const bottom = static_cast<float>(rect.y + rect.h) - radius;
    float const left = static_cast<float>(rect.x) + radius;
    float const top = static_cast<float>(rect.y) + radius;
    std::array<SDL_FPoint, 4> const centres{
        {{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
    float const r = std::max(radius - inset, 0.0F);
    Outline outline{};
    for (std::size_t i = 0; i < outline.size(); ++i) {
        std::size_t const corner = i / CORNER_POINTS;
        auto const step = static_cast<float>(i % CORNER_POINTS) / (CORNER_POINTS - 1);
        float const angle = (static_cast<float>(corner) + step) * std::numbers::pi_v<float> / 2.0F;
        outline.at(i) = {centres.at(corner).x - r * std::cos(angle),
                         centres.at(corner).y - r * std::sin(angle)};
    }
    return outline;
}

void fill(SDL_Renderer* renderer, Outline const& outline, SDL_Color color) {
    std::array<SDL_Vertex, OUTLINE_POINTS> vertices{};
    std::array<int, 3 * (OUTLINE_POINTS - 2)> indices{};
    for (std::size_t i = 0; i < OUTLINE_POINTS; ++i) vertices.at(i) = {outline.at(i), color, {}};
    for (std::size_t i = 0; i < OUTLINE_POINTS - 2; ++i) {
        indices.at(3 * i) = 0;
        indices.at(3 * i + 1) = static_cast<int>(i) + 1;
        indices.at(3 * i + 2) = static_cast<int>(i) + 2;
    }
    SDL_RenderGeometry(renderer, nullptr, vertices.data(), static_cast<int>(vertices.size()),
                       indices.data(), static_cast<int>(indices.size()));
}

// The band between two outlines.
void fill_between(SDL_Renderer* renderer, Outline const& outer, Outline const& inner,
                  SDL_Color color) {
    std::array<SDL_Vertex, 2 * OUTLINE_POINTS> vertices{};
    std::array<int, 6 * OUTLINE_POINTS> indices{};
    for (std::size_t i = 0; i < OUTLINE_POINTS; ++i) {
        vertices.at(2 * i) = {outer.at(i), color, {}};
        vertices.at(2 * i + 1) = {inner.at(i), color, {}};
        int const here = static_cast<int>(2 * i);
        int const next = static_cast<int>(2 * ((i + 1) % OUTLINE_POINTS));
        std::array<int, 6> const two{here, next, next + 1, here, next + 1, here + 1};
        std::copy(two.begin(), two.end(), indices.begin() + static_cast<std::ptrdiff_t>(6 * i));
    }
    SDL_RenderGeometry(renderer, nullptr, vertices.data(), static_cast<int>(vertices.size()),
                       indices.data(), static_cast<int>(indices.size()));
}

} // namespace

void draw_plate(SDL_Renderer* renderer, SDL_Rect const& rect, PlateLook const& look) {
    if (rect.w <= 0 || rect.h <= 0) return;
    float const radius = std::min(look.radius, static_cast<float>(std::min(rect.w, rect.h)) / 2.0F);
    Outline const outer = outline_of(rect, radius, 0.0F);
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    fill(renderer, outer, look.glass);
    if (look.rim.a == 0) return;
    fill_between(renderer, outer, outline_of(rect, radius, RIM_WIDTH), look.rim);
}
