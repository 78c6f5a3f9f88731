#include "track_compiler/markings_painter.h"

#include "track_compiler/goal.h"
#include "track_compiler/ground_painter.h"
#include "track_compiler/scenery.h"
#include "track_compiler/stencil.h"
#include "track_compiler/texture.h"

#include <array>

namespace {

// Worn paint: where the ground is rough it has gone.
void brush(std::uint32_t& pixel, Colour colour, Point at, double alpha) {
    double const left = smoothstep(0.22, 0.42, clouds().at(at, 36.0));
    blend(pixel, colour, alpha * (0.45 + 0.55 * left));
}

void paint_lettering(Theme const& theme, Lettering const& lettering, Picture const& picture) {
    double const wide =
        lettering.height * STENCIL_ASPECT * static_cast<double>(lettering.text.size());
    Point const along = direction(lettering.angle);
    double const radius = std::hypot(wide, lettering.height) / 2.0;
    paint_box(picture, lettering.at, radius, [&](std::uint32_t& pixel, Point offset) {
        double const x = (dot(offset, along) + wide / 2.0) / lettering.height;
        double const y = cross(along, offset) / lettering.height + 0.5;
        double const paint =
            stencil_coverage(lettering.text, x, y, 1.0 / (lettering.height * PICTURE_SCALE));
        brush(pixel, theme.ink, lettering.at + offset, 0.85 * paint);
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

// One bracket, open to the rear: the front of a car's place.
void paint_grid_box(Theme const& theme, Goal const& goal, Point front, Picture const& picture) {
    constexpr double HALF_WIDE = 10.0;
    constexpr double LONG = 16.0;
    constexpr double HALF_LINE = 0.9;
    paint_box(picture, front, LONG + HALF_WIDE, [&](std::uint32_t& pixel, Point offset) {
        double const x = -dot(offset, goal.ahead);
        double const y = std::fabs(dot(offset, goal.side));
        double const bar = std::max(std::fabs(x) - HALF_LINE, y - HALF_WIDE);
        double const leg = std::max(std::fabs(y - HALF_WIDE + HALF_LINE) - HALF_LINE,
                                    std::fabs(x - LONG / 2.0) - LONG / 2.0);
        brush(pixel, theme.line, front + offset, 0.9 * coverage(std::min(bar, leg)));
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
    for (std::uint32_t number = 0; number < tries; number++) {
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
    constexpr double SQUARE = 4.0; // cells; two rows of them, the line in their middle
    constexpr int BOXES = 6;
    constexpr double BOX_GAP = 30.0;
    Theme const& theme = source.theme;
    Goal const goal = goal_of(source.track);
    // Where the paint is ink, as on paper, the other squares are light.
    bool const inky = theme.line.r + theme.line.g + theme.line.b < 1.5F;
    Colour const other = inky ? WHITE : shade(theme.line, 0.12);
    paint_bar(picture, goal, {goal.middle, goal.half_span, SQUARE},
              [&](std::uint32_t& pixel, double x, double y, double alpha) {
                  auto const square = [](double v) {
                      return static_cast<int>(std::floor(v / SQUARE));
                  };
                  bool const odd = (square(x) + square(y)) % 2 != 0;
                  blend(pixel, odd ? other : theme.line, alpha);
              });
    for (int box = 0; box < BOXES; box++) {
        double const lane = (box % 2 == 0 ? -0.45 : 0.45) * goal.half_span;
        Point const front = goal.middle - (24.0 + BOX_GAP * box) * goal.ahead + lane * goal.side;
        paint_grid_box(theme, goal, front, picture);
    }
}
