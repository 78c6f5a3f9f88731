#pragma once

// Plane vectors and angles, as the world uses them: x right, y down, angles in radians growing
// from +x towards +y. A length below TINY counts as none before a division or an arc tangent.

#include "world/math.h"

#include <cmath>
#include <numbers>

constexpr double TINY_LENGTH = 1e-9;

struct Vec2 {
    double x = 0.0;
    double y = 0.0;
};

constexpr Vec2 operator+(Vec2 a, Vec2 b) {
    return {a.x + b.x, a.y + b.y};
}
constexpr Vec2 operator-(Vec2 a, Vec2 b) {
    return {a.x - b.x, a.y - b.y};
}
constexpr Vec2 operator*(double k, Vec2 v) {
    return {k * v.x, k * v.y};
}
constexpr double dot(Vec2 a, Vec2 b) {
    return a.x * b.x + a.y * b.y;
}
constexpr double cross(Vec2 a, Vec2 b) {
    return a.x * b.y - a.y * b.x;
}

// Square root and not hypot: the lengths here are nowhere near the limits of a double, and the
// root rounds the same on every machine.
inline double length(Vec2 v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

// The unit vector at `angle`.
inline Vec2 direction(double angle) {
    SineCosine const of = sine_cosine(angle);
    return {of.cosine, of.sine};
}
// The direction of a vector, -pi..pi.
inline double angle_of(Vec2 v) {
    return arc_tangent(v.y, v.x);
}
// A quarter turn clockwise on the screen: the side of something that faces along `v`.
constexpr Vec2 side_of(Vec2 v) {
    return {-v.y, v.x};
}

// The same direction as `angle`, within -pi..pi. Meant for angles a few turns off at most.
inline double wrap_angle(double angle) {
    while (angle > std::numbers::pi) angle -= 2.0 * std::numbers::pi;
    while (angle < -std::numbers::pi) angle += 2.0 * std::numbers::pi;
    return angle;
}
