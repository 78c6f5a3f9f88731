#include "track_compiler/gantry_painter.h"

#include "track_compiler/goal.h"
#include "track_compiler/grain.h"
#include "track_compiler/ground_painter.h"
#include "track_compiler/stencil.h"

#include <string>

namespace {

constexpr double BEHIND = 15.0; // cells from the line
constexpr double TOWER = 5.0;   // half of a tower's side
constexpr double RAIL = 2.8;    // half of the truss's width
constexpr double PANEL = 5.5;   // half of the name panel's width

void paint_shadow(Theme const& theme, Goal const& goal, Bar bar, Picture const& picture) {
    bar.middle = bar.middle - 16.0 * theme.shadow_length * towards_light(theme);
    paint_bar(picture, goal, bar, [&](std::uint32_t& pixel, double, double, double alpha) {
        blend(pixel, shade(unpack(pixel), 1.0 - theme.shadow), 0.8 * alpha);
    });
}

void paint_truss(Theme const& theme, Goal const& goal, Bar const& bar, Picture const& picture) {
    Colour const steel = mix(theme.wall, WHITE, 0.4);
    paint_bar(picture, goal, bar, [&](std::uint32_t& pixel, double x, double y, double alpha) {
        bool const rail = std::fabs(y) > RAIL - 0.9;
        double const zigzag = line_distance(x, 8.0) * 1.4 - RAIL;
        if (!rail && std::fabs(zigzag - y) > 0.7) return;
        blend(pixel, shade(steel, rail ? 1.0 : 0.75), alpha);
    });
}

void paint_tower(Theme const& theme, Goal const& goal, Point at, Picture const& picture) {
    paint_bar(picture, goal, {at, TOWER, TOWER},
              [&](std::uint32_t& pixel, double x, double y, double alpha) {
                  bool const rim = std::max(std::fabs(x), std::fabs(y)) > TOWER - 1.2;
                  bool const odd = (x < 0.0) != (y < 0.0);
                  Colour const flag = odd ? shade(WHITE, 0.15) : WHITE;
                  blend(pixel, rim ? shade(theme.kerb_red, 0.9) : flag, alpha);
              });
}

// The course's name for whoever arrives, between two chequered ends.
void paint_panel(PaintSource const& source, Goal const& goal, Bar const& bar,
                 Picture const& picture) {
    constexpr double CHECK = 2.75; // cells, four squares on the panel's width
    std::string const& text = source.course.name;
    double const letters = STENCIL_ASPECT * static_cast<double>(text.size());
    double const height = std::min(7.0, 2.0 * (bar.half_length - 9.0) / std::max(1.0, letters));
    paint_bar(picture, goal, bar, [&](std::uint32_t& pixel, double x, double y, double alpha) {
        double const left = (x + height * letters / 2.0) / height;
        double const paint =
            stencil_coverage(text, left, 0.5 - y / height, 1.0 / (height * PICTURE_SCALE));
        Colour colour = mix(Colour{0.10F, 0.11F, 0.14F}, WHITE, 0.95 * paint);
        bool const odd = line_distance(x, 2.0 * CHECK) < CHECK / 2.0;
        bool const other = line_distance(y, 2.0 * CHECK) < CHECK / 2.0;
        if (std::fabs(x) > bar.half_length - 7.5) colour = odd == other ? WHITE : shade(WHITE, 0.1);
        if (std::fabs(y) > PANEL - 0.8) colour = shade(source.theme.kerb_red, 0.95);
        blend(pixel, colour, alpha);
    });
}

} // namespace

void paint_gantry(PaintSource const& source, Picture const& picture) {
    Theme const& theme = source.theme;
    Goal const goal = goal_of(source.track);
    Point const middle = goal.middle - BEHIND * goal.ahead;
    double const reach = goal.half_span + source.course.kerb_depth + theme.rim_width + TOWER;
    Bar const truss{middle, reach, RAIL};
    Bar const panel{middle, goal.half_span - 4.0, PANEL};
    paint_shadow(theme, goal, truss, picture);
    paint_shadow(theme, goal, panel, picture);
    paint_truss(theme, goal, truss, picture);
    paint_panel(source, goal, panel, picture);
    for (double const end : {-reach, reach}) {
        paint_tower(theme, goal, middle + end * goal.side, picture);
    }
}
