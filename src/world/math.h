#pragma once

// The world's own sine, cosine, arc tangent and exponential. A C library picks its own by the
// processor and rounds the last bit as it likes, and from one such bit on another race is driven.
// These take plain IEEE additions, multiplications and divisions in a fixed order: the same bits
// from every compiler, processor and C library. Each result lies within one unit in the last place
// of the true value.

struct SineCosine {
    double sine = 0.0;
    double cosine = 1.0;
};

// Of an angle in radians, up to a thousand turns either way.
SineCosine sine_cosine(double angle);

// The direction of (x, y), -pi..pi: 0 along +x, growing towards +y; signs of zero as atan2 has
// them.
double arc_tangent(double y, double x);

// e to the power of `x`: 0 and infinity where a double ends.
double exponential(double x);
