#pragma once

// Smooth chance over the plane, for textures: the same at every build.

#include <cstdint>

// Value noise, 0..1, with features about 1 unit in size.
float value_noise(float x, float y, std::uint32_t seed);
// Four octaves of it, 0..1.
float cloud_noise(float x, float y, std::uint32_t seed);
