#pragma once

// The finer textures of ground and road, shared by their painters.

#include "track_compiler/texture.h"

#include <cmath>

// The largest whole number below; quicker than std::floor and good for any place on a course.
inline double whole(double value) {
    constexpr double BIAS = 1048576.0;
    return static_cast<int>(value + BIAS) - BIAS;
}

// Seen through a turned and a straight look-up the clouds' repetition cannot be made out.
inline double wide_clouds(Point at, double wave) {
    Point const turned{0.8 * at.x + 0.6 * at.y, 0.8 * at.y - 0.6 * at.x};
    double const sum = 0.6 * clouds().at(at, wave) + 0.4 * clouds().at(turned, 1.7 * wave);
    return smoothstep(0.25, 0.75, sum);
}

// Smooth changes in a few steps are no coarser to the eye, but the picture's file is smaller.
inline double stepped(double value) {
    return whole(value * 24.0 + 0.5) / 24.0;
}

// -0.5..0.5, with grains of `size` cells.
inline double grain(Point at, double size) {
    return whole(speckle().at(at, 16.0 * size) * 6.0) / 5.0 - 0.5;
}

// Distance to the nearest of lines that lie `spacing` apart.
inline double line_distance(double value, double spacing) {
    return std::fabs(value - spacing * whole(value / spacing + 0.5));
}

// Lines of `width` cells, one every `spacing` cells.
inline bool on_lines(double value, double spacing, double width) {
    return line_distance(value, spacing) < width / 2.0;
}
