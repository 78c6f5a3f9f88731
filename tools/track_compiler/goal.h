#pragma once

// The goal line as the painters see it, and straight things across the road.

#include "track_compiler/geometry.h"
#include "track_compiler/picture.h"
#include "world/track.h"

// Where the line lies and which way the cars cross it.
struct Goal {
    Point middle;
    Point ahead;            // direction of travel
    Point side;             // to the right of it
    double half_span = 0.0; // from the middle of the line to either end
};

inline Goal goal_of(Track const& track) {
    Point const a{track.goal_x1 + 0.5, track.goal_y1 + 0.5};
    Point const b{track.goal_x2 + 0.5, track.goal_y2 + 0.5};
    Point const ahead = direction(track.start_angle);
    return {0.5 * (a + b), ahead, side_of(ahead), length(b - a) / 2.0 + 0.5};
}

struct Bar {
    Point middle;
    double half_length = 0.0; // across the road
    double half_width = 0.0;  // along it
};

// A straight thing across the road, coloured by its own coordinates: across, along.
template <typename Paint>
void paint_bar(Picture const& picture, Goal const& goal, Bar const& bar, Paint paint) {
    double const radius = std::hypot(bar.half_length, bar.half_width) + 2.0;
    paint_box(picture, bar.middle, radius, [&](std::uint32_t& pixel, Point offset) {
        double const x = dot(offset, goal.side);
        double const y = dot(offset, goal.ahead);
        double const outside =
            std::max(std::fabs(x) - bar.half_length, std::fabs(y) - bar.half_width);
        if (coverage(outside) > 0.0) paint(pixel, x, y, coverage(outside));
    });
}
