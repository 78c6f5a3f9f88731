#pragma once

// Points and distances in track cells: x to the right, y down, as everywhere in the game.

#include <algorithm>
#include <cmath>

struct Point {
    double x = 0.0;
    double y = 0.0;
};

inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
inline Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
inline Point operator*(Point a, double factor) { return {a.x * factor, a.y * factor}; }
inline double dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
// Positive if b lies clockwise of a on the screen.
inline double cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }
inline double length(Point a) { return std::hypot(a.x, a.y); }
inline double distance(Point a, Point b) { return length(b - a); }
inline Point direction(double angle) { return {std::cos(angle), std::sin(angle)}; }
// The direction turned a quarter clockwise: to the right of somebody who looks along it.
inline Point right_of(Point a) { return {-a.y, a.x}; }

inline double smoothstep(double low, double high, double value) {
    double const t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}
