#pragma once

// Thresholds for dithering that lie as evenly as dots strewn by hand: no rows, no mesh, no clumps,
// whatever share of them is passed. The square repeats without a seam.

#include <array>
#include <cstddef>
#include <cstdint>

constexpr std::size_t BLUE_NOISE_SIDE = 64; // pixels; a power of two

// Every number of 0..4095 once, row by row. Made at the first call.
std::array<std::uint16_t, BLUE_NOISE_SIDE * BLUE_NOISE_SIDE> const& blue_noise();
