#pragma once

// What the compiler needs of plane geometry beyond the world's own. All lengths are in cells.

#include "world/geometry.h"

#include <algorithm>

using Point = Vec2;

inline double distance(Point a, Point b) {
    return length(b - a);
}

// 0 below `low`, 1 above `high`, and a smooth change between them.
inline double smoothstep(double low, double high, double value) {
    double const t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}
