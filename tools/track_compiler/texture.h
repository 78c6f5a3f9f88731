#pragma once

// Seamless squares of noise, made once: a look-up is a hundred times cheaper than the noise itself,
// and there are millions of pixels.

#include "track_compiler/geometry.h"

#include <cstdint>
#include <vector>

constexpr int TEXTURE_SIDE = 512;     // texels; a power of two
constexpr double LONGEST_WAVE = 64.0; // texels

struct Texture {
    std::vector<float> values; // 0..1, row by row

    // Wraps in both directions.
    [[nodiscard]] float texel(int x, int y) const {
        auto const column = static_cast<std::uint32_t>(x) % TEXTURE_SIDE;
        auto const row = static_cast<std::uint32_t>(y) % TEXTURE_SIDE;
        return values[row * TEXTURE_SIDE + column];
    }
    // Between the texels; `wave` is the length in cells of the texture's longest wave.
    [[nodiscard]] double at(Point place, double wave) const {
        constexpr double BIAS = 65536.0; // texels, a multiple of the side: no place lies below 0
        double const scale = LONGEST_WAVE / wave;
        double const x = place.x * scale + BIAS;
        double const y = place.y * scale + BIAS;
        auto const ix = static_cast<int>(x);
        auto const iy = static_cast<int>(y);
        auto const tx = static_cast<float>(x - ix);
        auto const ty = static_cast<float>(y - iy);
        float const upper = texel(ix, iy) + (texel(ix + 1, iy) - texel(ix, iy)) * tx;
        float const lower = texel(ix, iy + 1) + (texel(ix + 1, iy + 1) - texel(ix, iy + 1)) * tx;
        return static_cast<double>(upper + (lower - upper) * ty);
    }
};

Texture const& clouds();  // four octaves of soft noise
Texture const& cracks();  // 1 in the joints between plates of about 64 texels, 0 inside
Texture const& speckle(); // fine grain, a few texels a grain
