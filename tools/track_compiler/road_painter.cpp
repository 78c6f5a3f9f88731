#include "track_compiler/road_painter.h"

#include "track_compiler/goal.h"
#include "track_compiler/grain.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"

namespace {

// Around a fork's mouth the surface is the road's: its rubber and its patches run on there, and the
// fork's own begin at this distance from the road's edge.
constexpr double MOUTH = 40.0; // cells

// Where the place lies with respect to the road without its forks.
RoadPlace main_place(PaintSource const& source, Point at, RoadPlace const& place) {
    return source.line.forks.empty() ? place : road_at(source.main_road, at);
}

// Two wheel tracks with a paler strip between them, `off` cells from their middle.
double rubber(RoadPlace const& place, double off) {
    double const broad = 1.0 - smoothstep(6.0, 34.0, off);
    double const tracks = 1.0 - smoothstep(1.0, 7.0, std::fabs(std::fabs(off) - 7.0));
    double const streak = clouds().at({place.along * 0.12, place.lateral * 2.2}, 16.0);
    return (0.58 * broad + 0.30 * tracks) * (0.72 + 0.56 * streak);
}

// Darker where everybody drives: along the racing line, and in the middle of a fork.
Colour worn(PaintSource const& source, Point at, RoadPlace const& place, RoadPlace const& main) {
    Theme const& theme = source.theme;
    double const strayed = 12.0 * (clouds().at(at, 120.0) - 0.5);
    double const racing = source.racing[source.line.index_at(main.along)];
    double amount = rubber(main, std::fabs(main.lateral - racing) + strayed);
    if (place.along >= FORK_ALONG) {
        double const begun = smoothstep(0.0, MOUTH, main.edge);
        amount = std::max(amount, begun * rubber(place, std::fabs(place.lateral) + strayed));
    }
    return mix(theme.road, theme.road_worn, stepped(amount));
}

// A piece of the surface that was cut open and closed again. Lengths in cells.
struct Repair {
    bool made = false; // most stretches have none
    double along = 0.0;
    double lateral = 0.0;
    double half_long = 0.0;
    double half_wide = 0.0;
    double tone = 1.0;
};

// None where the line, the boxes behind it or letters would lie on it.
bool may_repair(PaintSource const& source, Repair const& repair) {
    constexpr double GOAL_ROOM = 200.0;
    if (repair.along >= FORK_ALONG) return true;
    Point const middle = source.line.at(repair.along).at;
    if (distance(middle, goal_of(source.track).middle) < GOAL_ROOM) return false;
    return std::none_of(source.course.letterings.begin(), source.course.letterings.end(),
                        [&](Lettering const& lettering) {
                            double const reach =
                                (0.5 * static_cast<double>(lettering.text.size()) + 1.0) *
                                lettering.height;
                            return distance(middle, lettering.at) < reach;
                        });
}

Repair repair_of(PaintSource const& source, double along) {
    constexpr double STRETCH = 130.0; // cells of road that have one piece or none
    auto const number = static_cast<std::uint32_t>(std::max(0.0, along / STRETCH));
    if (chance(number, 11, 7) > 0.32 * source.theme.repairs) return {};
    Repair repair{.along = (number + 0.5) * STRETCH,
                  .lateral = 44.0 * (chance(number, 14, 7) - 0.5),
                  .half_long = 10.0 + 16.0 * chance(number, 12, 7),
                  .half_wide = 7.0 + 7.0 * chance(number, 13, 7),
                  .tone = chance(number, 15, 7) < 0.5 ? 0.94 : 1.05};
    repair.made = may_repair(source, repair);
    return repair;
}

// What the piece makes of the surface: another shade, and what wear has left of its seam of tar.
double repaired(Repair const& repair, RoadPlace const& place, Point at) {
    constexpr double ROUND = 4.0; // radius of its corners
    double const x = std::fabs(place.along - repair.along) - repair.half_long + ROUND;
    double const y = std::fabs(place.lateral - repair.lateral) - repair.half_wide + ROUND;
    double const corner = std::hypot(std::max(x, 0.0), std::max(y, 0.0));
    double const wavy = 2.0 * (clouds().at(at, 14.0) - 0.5);
    double const outside = corner + std::min(std::max(x, y), 0.0) - ROUND + wavy;
    double const left = smoothstep(0.48, 0.56, clouds().at({at.y, at.x}, 30.0));
    double const seam = 0.14 * left * coverage(std::fabs(outside) - 0.5);
    return (1.0 + (repair.tone - 1.0) * coverage(outside)) * (1.0 - seam);
}

double repair(PaintSource const& source, RoadPlace const& place, Point at) {
    Repair const found = repair_of(source, place.along);
    return found.made ? repaired(found, place, at) : 1.0;
}

// Stones in the surface, and dust or moss that lies along its edges.
Colour textured(Theme const& theme, Point at, Colour colour) {
    double const patch = stepped(wide_clouds(at, 90.0)) - 0.5;
    double const fine = grain(at, 1.1);
    double const stones = fine > 0.35 ? 0.07 : fine < -0.35 ? -0.07 : 0.0;
    double const coarse = 0.05 * grain(at, 5.0);
    return shade(colour, 1.0 + theme.road_grain * (0.11 * patch + coarse + 0.05 * fine + stones));
}

} // namespace

Colour road_colour(PaintSource const& source, Point at, RoadPlace const& place) {
    Theme const& theme = source.theme;
    RoadPlace const main = main_place(source, at, place);
    Colour colour = worn(source, at, place, main);
    if (theme.repairs > 0.0) {
        double const crack = smoothstep(0.8, 1.0, cracks().at(at, 150.0)) *
                             smoothstep(0.52, 0.62, clouds().at(at, 300.0));
        colour = shade(colour, repair(source, main.edge < MOUTH ? main : place, at) *
                                   (1.0 - 0.25 * stepped(crack)));
    }
    double const away = -place.edge + 11.0 * (clouds().at(at, 30.0) - 0.5);
    colour = mix(colour, theme.road_edge, stepped(0.75 * (1.0 - smoothstep(0.0, 14.0, away))));
    colour = textured(theme, at, colour);
    double const line = std::fabs(-place.edge - 4.0) - 1.0; // the painted edge of a made road
    double const left = 0.88 * theme.edge_line * smoothstep(0.28, 0.42, clouds().at(at, 50.0));
    return mix(colour, theme.line, stepped(left) * coverage(line));
}
