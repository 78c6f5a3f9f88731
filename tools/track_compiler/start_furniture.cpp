#include "track_compiler/start_furniture.h"

#include "track_compiler/goal.h"
#include "track_compiler/scenery.h"
#include "track_compiler/stencil.h"
#include "track_compiler/things.h"

#include <algorithm>
#include <array>

namespace {

constexpr double CLEAR = 3.0; // cells between the rim and what stands behind it

// A pole behind the rim at one end of the line. The cloth never hangs over the road.
SceneryItem flag_at(Goal const& goal, double side, double border) {
    constexpr double LONG = 26.0;
    constexpr double WIDE = 16.0;
    Point const outwards = side * goal.side;
    Point const foot = goal.middle + (goal.half_span + border + CLEAR + 2.0) * outwards;
    Point const wind = std::fabs(outwards.x) > 0.5 ? outwards : Point{1.0, 0.0};
    return {.kind = SceneryKind::flag,
            .at = foot + (LONG / 2.0 - 2.0) * wind,
            .length = LONG,
            .width = WIDE,
            .angle = std::atan2(wind.y, wind.x)};
}

// Half of a thing's box as the camera sees it, sideways and downwards.
Point half_box(SceneryItem const& item) {
    Point const along = direction(item.angle);
    double const x = std::fabs(along.x);
    double const y = std::fabs(along.y);
    return {(item.length * x + item.width * y) / 2.0, (item.length * y + item.width * x) / 2.0};
}

bool is_free(SceneryItem const& wanted, Course const& course, RoadField const& field,
             double border) {
    Point const half = half_box(wanted);
    bool const on_grid = wanted.at.x > half.x && wanted.at.x < course.width - half.x &&
                         wanted.at.y > half.y && wanted.at.y < course.height - half.y;
    if (!on_grid || touches_road(wanted, field, border + CLEAR / 2.0)) return false;
    return std::none_of(course.items.begin(), course.items.end(), [&](SceneryItem const& item) {
        Point const room = half + half_box(item);
        return std::fabs(item.at.x - wanted.at.x) < room.x + 2.0 &&
               std::fabs(item.at.y - wanted.at.y) < room.y + 2.0;
    });
}

// As near to the line as there is room, and level: the camera never turns.
void add_banner(Course& course, Goal const& goal, RoadField const& field, double border) {
    constexpr double STEP = 10.0; // cells along the road to the next try
    constexpr int PLACES_TRIED = 24;
    SceneryItem banner{.kind = SceneryKind::banner, .text = course.name};
    banner.length = BANNER_LETTER * stencil_width(course.name) + 2.0 * BANNER_END;
    banner.width = BANNER_WIDTH;
    Point const half = half_box(banner);
    double const away = goal.half_span + border + CLEAR + std::fabs(goal.side.x) * half.x +
                        std::fabs(goal.side.y) * half.y;
    for (int step = 0; step < PLACES_TRIED; ++step) {
        double const along = STEP * (step % 2 == 0 ? -step / 2 : (step + 1) / 2);
        for (double const side : {-1.0, 1.0}) {
            for (double const further : {0.0, 14.0}) { // in front of the flags or behind them
                banner.at = goal.middle + along * goal.ahead + side * (away + further) * goal.side;
                if (!is_free(banner, course, field, border)) continue;
                course.items.push_back(banner);
                return;
            }
        }
    }
}

} // namespace

void add_start_furniture(Course& course, Theme const& theme, Track const& track,
                         RoadField const& field) {
    Goal const goal = goal_of(track);
    double const border = theme.rim_width; // no kerbs lie beside the line
    for (double const side : {-1.0, 1.0}) course.items.push_back(flag_at(goal, side, border));
    if (!course.name.empty()) add_banner(course, goal, field, border);
}
