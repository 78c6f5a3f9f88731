#include "track_compiler/markings_painter.h"

#include "track_compiler/goal.h"
#include "track_compiler/ground_painter.h"
#include "track_compiler/scenery.h"
#include "track_compiler/stencil.h"
#include "track_compiler/texture.h"

#include <array>

namespace {

// Paint that feet and tyres have worn alike everywhere: small pits in an even coat. A slanting and
// a wider look-up keep one letter's pits from coming again in the next.
void brush(std::uint32_t& pixel, Colour colour, Point at, double alpha) {
    Point const slanting{0.8 * at.x + 0.6 * at.y, 0.8 * at.y - 0.6 * at.x};
    double const coat = 0.62 * clouds().at(slanting, 3.1) + 0.38 * clouds().at(at, 13.7);
    double const pits = smoothstep(0.35, 0.40, coat);
    blend(pixel, colour, alpha * (0.74 + 0.26 * pits));
}

void paint_lettering(Theme const& theme, Lettering const& lettering, Picture const& picture) {
    double const high = lettering.height;
    double const wide = high * stencil_width(lettering.text);
    double const radius = std::max(wide, high) / 2.0 + 1.0;
    paint_box(picture, lettering.at, radius, [&](std::uint32_t& pixel, Point offset) {
        if (std::fabs(offset.y) > 0.7 * high) return;
        Point const at = (1.0 / high) * (offset + Point{wide / 2.0, high / 2.0});
        double const paint = coverage(high * stencil_outside(lettering.text, at));
        if (paint > 0.0) brush(pixel, theme.ink, lettering.at + offset, 0.94 * paint);
    });
}

// Two wheels' worth of rubber from one place on the road to another.
void paint_skid(PaintSource const& source, Picture const& picture, std::size_t first,
                std::uint32_t number) {
    constexpr double HALF_TRACK = 5.0; // cells between a car's middle and its wheels
    constexpr double DAB = 1.3;        // cells, half the width of a tyre's mark
    constexpr double SPACING = 0.7;    // cells between dabs
    double const begin = source.line.samples[first].along;
    double const reach = 50.0 + 130.0 * chance(number, 1, 5);
    double const beside = 18.0 * (chance(number, 2, 5) - 0.5);
    double const drift = 26.0 * (chance(number, 3, 5) - 0.5);
    double const dark = 0.06 + 0.10 * chance(number, 4, 5);
    Colour const rubber = shade(source.theme.road_worn, 0.62);
    for (double gone = 0.0; gone < reach; gone += SPACING) {
        std::size_t const at = source.line.index_at(begin + gone);
        RoadSample const& here = source.line.samples[at];
        Point const ahead = direction(here.heading);
        Point const middle =
            here.at + along_difference(source.line, here.along, begin + gone) * ahead;
        double const t = gone / reach;
        double const fade = std::min(1.0, 6.0 * t) * std::min(1.0, 3.0 * (1.0 - t));
        double const room = here.half_width - 9.0;
        double const lateral = std::clamp(source.racing[at] + beside + drift * t * t, -room, room);
        for (double const wheel : {-HALF_TRACK, HALF_TRACK}) {
            Point const place = middle + (lateral + wheel) * side_of(ahead);
            paint_box(picture, place, DAB + 1.0, [&](std::uint32_t& pixel, Point offset) {
                blend(pixel, rubber, dark * fade * coverage(length(offset) - DAB));
            });
        }
    }
}

// The places of both cars, side by side and open to the rear, painted where the cars will stand.
void paint_boxes(Theme const& theme, Track const& track, Goal const& goal, Picture const& picture) {
    constexpr double NOSE = 15.5;     // cells from a car's middle to its box's front
    constexpr double TAIL = 12.0;     // and to where its sides end
    constexpr double WIDE = 16.4;     // from the line between the cars to the outer lines
    constexpr double HALF_LINE = 1.1; // a line's half width
    Point const start{track.start_x + 0.5, track.start_y + 0.5};
    paint_box(picture, start, NOSE + WIDE, [&](std::uint32_t& pixel, Point offset) {
        double const x = dot(offset, goal.ahead);
        double const y = std::fabs(dot(offset, goal.side));
        double const front = std::max(std::fabs(x - NOSE), y - WIDE);
        double const lines = std::min(y, std::fabs(y - WIDE));
        double const sides = std::max({lines, x - NOSE, -TAIL - x});
        brush(pixel, theme.line, start + offset,
              0.96 * coverage(std::min(front, sides) - HALF_LINE));
    });
}

} // namespace

void paint_letterings(PaintSource const& source, Picture const& picture) {
    for (Lettering const& lettering : source.course.letterings) {
        paint_lettering(source.theme, lettering, picture);
    }
}

void paint_skids(PaintSource const& source, Picture const& picture) {
    constexpr double APART = 34.0; // cells of road to each try
    std::size_t const count = source.line.samples.size();
    auto const tries = static_cast<std::uint32_t>(source.line.length / APART);
    for (std::uint32_t number = 0; number < tries; ++number) {
        auto const first =
            static_cast<std::size_t>(chance(number, 0, 5) * static_cast<double>(count));
        // Most are laid in bends and while braking for them.
        auto const bent = [&](double ahead) {
            double const along = source.line.samples[first].along + ahead;
            return std::fabs(source.line.at(along).curvature) > 1.0 / 320.0;
        };
        bool const likely = bent(0.0) || bent(90.0);
        if (chance(number, 9, 5) < (likely ? 0.9 : 0.12)) {
            paint_skid(source, picture, first, number);
        }
    }
}

void paint_goal(PaintSource const& source, Picture const& picture) {
    constexpr double SQUARE = 8.0;        // cells; large enough for the smallest zoom
    constexpr double HALF = 1.5 * SQUARE; // three rows of them, the line in their middle
    Theme const& theme = source.theme;
    Goal const goal = goal_of(source.track);
    // Where the paint is ink, as on paper, the other squares are light.
    bool const inky = theme.line.r + theme.line.g + theme.line.b < 1.5F;
    Colour const other = inky ? WHITE : shade(theme.line, 0.10);
    paint_bar(picture, goal, {goal.middle, goal.half_span, HALF},
              [&](std::uint32_t& pixel, double x, double y, double alpha) {
                  auto const square = [](double v) {
                      return static_cast<int>(std::floor((v + HALF) / SQUARE));
                  };
                  bool const odd = (square(x) + square(y)) % 2 != 0;
                  Point const at = goal.middle + x * goal.side + y * goal.ahead;
                  brush(pixel, odd ? other : theme.line, at, 0.96 * alpha);
              });
    paint_boxes(theme, source.track, goal, picture);
}
