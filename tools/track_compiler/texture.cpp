#include "track_compiler/texture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr auto SIDE = static_cast<std::size_t>(TEXTURE_SIDE);

float lattice(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t h = x * 0x9E3779B1U ^ y * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    h = (h ^ (h >> 15U)) * 0x2C1B3C6DU;
    h ^= h >> 13U;
    return static_cast<float>(h >> 8U) / 16777216.0F;
}

// Smooth noise with `cells` lattice cells to the side, so that it wraps.
float wrapped_noise(float x, float y, std::uint32_t cells, std::uint32_t seed) {
    auto const ix = static_cast<std::uint32_t>(x);
    auto const iy = static_cast<std::uint32_t>(y);
    auto const ease = [](float t) { return t * t * (3.0F - 2.0F * t); };
    float const tx = ease(x - static_cast<float>(ix));
    float const ty = ease(y - static_cast<float>(iy));
    auto const corner = [&](std::uint32_t dx, std::uint32_t dy) {
        return lattice((ix + dx) % cells, (iy + dy) % cells, seed);
    };
    float const top = std::lerp(corner(0, 0), corner(1, 0), tx);
    return std::lerp(top, std::lerp(corner(0, 1), corner(1, 1), tx), ty);
}

float octaves(std::size_t x, std::size_t y, std::uint32_t cells, int count, std::uint32_t seed) {
    float sum = 0.0F;
    float share = 1.0F;
    float whole = 0.0F;
    for (int octave = 0; octave < count; ++octave) {
        float const scale = static_cast<float>(cells) / static_cast<float>(TEXTURE_SIDE);
        sum += share * wrapped_noise(static_cast<float>(x) * scale, static_cast<float>(y) * scale,
                                     cells, seed + static_cast<std::uint32_t>(octave));
        whole += share;
        share *= 0.5F;
        cells *= 2;
    }
    return sum / whole;
}

// How near a place is to the joint between the two nearest of scattered seeds, one in each square.
float joint(std::size_t x, std::size_t y) {
    constexpr std::uint32_t SQUARES = 8;
    float const scale = static_cast<float>(SQUARES) / static_cast<float>(TEXTURE_SIDE);
    float const px = static_cast<float>(x) * scale + 0.08F * octaves(x, y, 32, 2, 41);
    float const py = static_cast<float>(y) * scale + 0.08F * octaves(x, y, 32, 2, 43);
    float first = 9.0F;
    float second = 9.0F;
    for (std::uint32_t square = 0; square < 9; ++square) {
        // One square more than needed keeps the column above 0; the lattice wraps anyway.
        std::uint32_t const sx = static_cast<std::uint32_t>(px) + SQUARES + square % 3 - 1;
        std::uint32_t const sy = static_cast<std::uint32_t>(py) + SQUARES + square / 3 - 1;
        float const seed_x = static_cast<float>(sx) - static_cast<float>(SQUARES) +
                             lattice(sx % SQUARES, sy % SQUARES, 31);
        float const seed_y = static_cast<float>(sy) - static_cast<float>(SQUARES) +
                             lattice(sx % SQUARES, sy % SQUARES, 37);
        float const gap = std::hypot(seed_x - px, seed_y - py);
        second = std::min(second, std::max(first, gap));
        first = std::min(first, gap);
    }
    return std::clamp(1.0F - (second - first) / 0.07F, 0.0F, 1.0F);
}

template <typename Value>
Texture make_texture(Value value) {
    Texture texture;
    texture.values.reserve(SIDE * SIDE);
    for (std::size_t y = 0; y < SIDE; ++y) {
        for (std::size_t x = 0; x < SIDE; ++x) texture.values.push_back(value(x, y));
    }
    return texture;
}

} // namespace

Texture const& clouds() {
    static Texture const texture = make_texture(
        [](std::size_t x, std::size_t y) { return octaves(x, y, TEXTURE_SIDE / 64, 4, 1); });
    return texture;
}

Texture const& cracks() {
    static Texture const texture = make_texture(joint);
    return texture;
}

Texture const& speckle() {
    static Texture const texture = make_texture(
        [](std::size_t x, std::size_t y) { return octaves(x, y, TEXTURE_SIDE / 4, 1, 11); });
    return texture;
}
