#pragma once

// Colours, and a picture's pixels as the painters reach them: by places in cells of the grid.

#include "track_compiler/geometry.h"
#include "track_compiler/painter.h"
#include "track_compiler/theme.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

inline Colour mix(Colour a, Colour b, double t) {
    auto const f = static_cast<float>(std::clamp(t, 0.0, 1.0));
    return {a.r + (b.r - a.r) * f, a.g + (b.g - a.g) * f, a.b + (b.b - a.b) * f};
}

inline Colour shade(Colour a, double factor) {
    auto const f = static_cast<float>(factor);
    return {a.r * f, a.g * f, a.b * f};
}

inline std::uint32_t pack(Colour colour) {
    auto const channel = [](float value) {
        return static_cast<std::uint32_t>(std::clamp(value, 0.0F, 1.0F) * 255.0F + 0.5F);
    };
    return 0xFF000000U | channel(colour.b) << 16U | channel(colour.g) << 8U | channel(colour.r);
}

inline Colour unpack(std::uint32_t pixel) {
    auto const channel = [&](unsigned shift) {
        return static_cast<float>((pixel >> shift) & 0xFFU) / 255.0F;
    };
    return {channel(0), channel(8), channel(16)};
}

constexpr Colour WHITE{1.0F, 1.0F, 1.0F};

// How much of a pixel a shape covers whose outline is `outside` cells away, negative within.
inline double coverage(double outside) {
    return std::clamp(0.5 - outside * PICTURE_SCALE, 0.0, 1.0);
}

struct Picture {
    std::span<std::uint32_t> pixels;
    int width = 0;
    int height = 0;

    [[nodiscard]] std::uint32_t& at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

inline void blend(std::uint32_t& pixel, Colour colour, double alpha) {
    if (alpha > 0.0) pixel = pack(mix(unpack(pixel), colour, alpha));
}

// Calls paint(pixel, offset from the middle in cells) for every pixel of a square.
template <typename Paint>
void paint_box(Picture const& picture, Point middle, double radius, Paint paint) {
    auto const pixel = [](double cells) { return static_cast<int>(cells * PICTURE_SCALE); };
    int const bottom = std::min(picture.height, pixel(middle.y + radius) + 1);
    int const right = std::min(picture.width, pixel(middle.x + radius) + 1);
    for (int y = std::max(0, pixel(middle.y - radius)); y < bottom; ++y) {
        for (int x = std::max(0, pixel(middle.x - radius)); x < right; ++x) {
            paint(picture.at(x, y), pixel_place(x, y) - middle);
        }
    }
}
