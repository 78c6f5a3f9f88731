#include "track_compiler/noise.h"

#include <cmath>

namespace {

float lattice(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    std::uint32_t h = static_cast<std::uint32_t>(x) * 0x9E3779B1U ^
                      static_cast<std::uint32_t>(y) * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    h = (h ^ (h >> 15U)) * 0x2C1B3C6DU;
    h ^= h >> 13U;
    return static_cast<float>(h >> 8U) / 16777216.0F;
}

} // namespace

float value_noise(float x, float y, std::uint32_t seed) {
    float const fx = std::floor(x);
    float const fy = std::floor(y);
    auto const ix = static_cast<std::int32_t>(fx);
    auto const iy = static_cast<std::int32_t>(fy);
    float const tx = (x - fx) * (x - fx) * (3.0F - 2.0F * (x - fx));
    float const ty = (y - fy) * (y - fy) * (3.0F - 2.0F * (y - fy));
    float const a = lattice(ix, iy, seed);
    float const b = lattice(ix + 1, iy, seed);
    float const c = lattice(ix, iy + 1, seed);
    float const d = lattice(ix + 1, iy + 1, seed);
    float const top = a + (b - a) * tx;
    return top + (c + (d - c) * tx - top) * ty;
}

float cloud_noise(float x, float y, std::uint32_t seed) {
    float sum = 0.0F;
    float share = 0.5F;
    for (std::uint32_t octave = 0; octave < 4; octave++) {
        sum += share * value_noise(x, y, seed + octave);
        x *= 2.03F;
        y *= 2.03F;
        share *= 0.5F;
    }
    return sum / 0.9375F;
}
