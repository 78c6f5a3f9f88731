#include "track_compiler/ground_painter.h"

#include "track_compiler/grain.h"
#include "track_compiler/land_painter.h"
#include "track_compiler/picture.h"
#include "track_compiler/road_painter.h"

#include <numbers>

namespace {

// The rim's surface rises and falls across its width, so that it has a lit and a dark side.
Colour rim_colour(PaintSource const& source, Point at, RoadPlace const& place) {
    Theme const& theme = source.theme;
    auto const edge = [&](double x, double y) {
        return road_at(source.field, at + Point{x, y}).edge;
    };
    Point const uphill =
        0.5 * Point{edge(1.0, 0.0) - edge(-1.0, 0.0), edge(0.0, 1.0) - edge(0.0, -1.0)};
    double const kerb = kerb_depth_at(source.line, place.along, place.lateral);
    double const across = std::clamp((place.edge - kerb) / theme.rim_width, 0.0, 1.0);
    double const rough = theme.rim_rough * (clouds().at(at, 16.0) - 0.5);
    double const tilt = -std::cos(std::numbers::pi * across) * dot(uphill, towards_light(theme));
    double const light = 0.62 - 0.42 * std::clamp(-tilt, -1.0, 1.0);
    Colour const colour = mix(theme.rim_dark, theme.rim_light, stepped(light + 1.6 * rough));
    bool const joint = theme.rim_block > 0.0 && on_lines(place.along, theme.rim_block, 1.2);
    bool const foot = across < 0.12 || across > 0.9;
    return shade(colour, joint ? 0.72 : foot ? 0.86 : 1.0);
}

Colour kerb_colour(Theme const& theme, Colour stripe, Point at, RoadPlace const& place) {
    double const rubber = 0.12 * theme.grain * stepped(clouds().at(at, 24.0));
    return shade(stripe, (place.edge < 0.7 ? 0.86 : 1.0) - rubber);
}

// How deep is the place in the shadow of the rim, 0..1? The rim stands a few cells high.
double rim_shadow(PaintSource const& source, Point at, double edge) {
    constexpr double HEIGHT = 5.0; // cells
    constexpr int STEPS = 4;
    double const fall = HEIGHT * std::min(1.2, source.theme.shadow_length);
    if (std::fabs(edge) > 16.0 + fall) return 0.0;
    Point const light = towards_light(source.theme);
    for (int step = 1; step <= STEPS; ++step) {
        RoadPlace const caster = road_at(source.field, at + (fall * step / STEPS) * light);
        if (surface_at(source.line, caster, source.theme.rim_width) == Surface::rim) {
            return std::min(1.0, 1.5 - 0.75 * step / STEPS); // it fades towards its tip
        }
    }
    return 0.0;
}

// Does a seam between two surfaces run through the pixel?
bool on_seam(PaintSource const& source, RoadPlace const& place) {
    constexpr double NEAR = 0.5; // cells
    if (place.edge < -NEAR || place.edge > 16.0) return false;
    double const kerb = kerb_depth_at(source.line, place.along, place.lateral);
    if (place.edge < kerb + NEAR) return true; // stripes have seams everywhere
    return std::fabs(place.edge - kerb - source.theme.rim_width) < NEAR;
}

// Of one point, without regard to what lies next to it.
Colour point_colour(PaintSource const& source, Land const& land, Point at, RoadPlace const& place) {
    Theme const& theme = source.theme;
    Colour colour;
    switch (surface_at(source.line, place, theme.rim_width)) {
    case Surface::road:
        colour = road_colour(source, at, place);
        break;
    case Surface::kerb_red:
        colour = kerb_colour(theme, theme.kerb_red, at, place);
        break;
    case Surface::kerb_white:
        colour = kerb_colour(theme, theme.kerb_white, at, place);
        break;
    case Surface::rim:
        return rim_colour(source, at, place);
    case Surface::land:
        colour = land_colour(source, land, at, place.edge);
        break;
    }
    return shade(colour, 1.0 - 0.8 * theme.shadow * rim_shadow(source, at, place.edge));
}

} // namespace

Point towards_light(Theme const& theme) {
    return -1.0 * direction(theme.shadow_angle * std::numbers::pi / 180.0);
}

Colour ground_colour(PaintSource const& source, Land const& land, Point at) {
    constexpr double SPREAD = 0.25 / PICTURE_SCALE; // from a pixel's middle to its quarters'
    RoadPlace const place = road_at(source.field, at);
    if (!on_seam(source, place)) return point_colour(source, land, at, place);
    Colour sum;
    for (double const x : {-SPREAD, SPREAD}) {
        for (double const y : {-SPREAD, SPREAD}) {
            Point const corner = at + Point{x, y};
            Colour const part = point_colour(source, land, corner, road_at(source.field, corner));
            sum = {sum.r + part.r / 4.0F, sum.g + part.g / 4.0F, sum.b + part.b / 4.0F};
        }
    }
    return sum;
}
