#include "track_compiler/water_painter.h"

#include "track_compiler/grain.h"
#include "track_compiler/picture.h"

namespace {

// The net of light that waves throw on a shallow bed.
double light_net(Point at) {
    Point const bent = at + Point{14.0 * (clouds().at(at, 44.0) - 0.5),
                                  14.0 * (clouds().at({at.y, -at.x}, 44.0) - 0.5)};
    return cracks().at(bent, 24.0);
}

// Crests run across the wind, in groups, and are longer than they are wide.
double crests(Point at) {
    double const run = (0.34 * at.x + 0.94 * at.y) / 4.2 + 16.0 * clouds().at(at, 150.0);
    double const crest = smoothstep(0.55, 1.0, std::sin(run));
    return crest * smoothstep(0.46, 0.62, clouds().at({0.6 * at.x, 1.5 * at.y}, 64.0));
}

// Where the swell breaks: a line of foam at the edge, a paler one that follows it.
double foam(Point at, double depth) {
    double const lap = depth + 7.0 * (clouds().at(at, 26.0) - 0.5);
    double const first = smoothstep(0.5, 2.0, lap) - smoothstep(2.5, 7.0, lap);
    double const second = smoothstep(10.0, 12.0, lap) - smoothstep(12.0, 16.0, lap);
    double const lace = smoothstep(0.34, 0.52, clouds().at(at, 9.0));
    return first * (0.45 + 0.4 * lace) + 0.34 * second * lace;
}

Colour quay_colour(Theme const& theme, Colour land, Point at, double depth) {
    constexpr double COPING = 7.0; // cells
    if (depth < -COPING) {
        return mix(land, shade(land, 0.8), smoothstep(-COPING - 3.0, -COPING, depth));
    }
    bool const joint = on_lines(at.x, 14.0, 0.8) || on_lines(at.y, 14.0, 0.8);
    double const slab = 1.12 + 0.12 * grain(at, 2.0) - (depth > -1.2 ? 0.3 : 0.0);
    return shade(theme.plaza, joint ? 0.85 : slab);
}

} // namespace

Colour water_colour(Theme const& theme, Point at, double depth) {
    double const hollow = depth + 46.0 * (clouds().at(at, 120.0) - 0.5);
    double const shelf = stepped(smoothstep(2.0, 92.0, hollow));
    Colour colour = mix(theme.water_shallow, theme.water_deep, shelf);
    double const weed = smoothstep(0.54, 0.68, clouds().at({at.y, at.x}, 84.0));
    colour = shade(colour, 1.0 - 0.14 * stepped(weed) * (1.0 - 0.6 * shelf));
    double const sun = 1.0 - 0.7 * theme.dark;
    colour = mix(colour, WHITE, sun * 0.20 * stepped(light_net(at)) * (1.0 - shelf));
    colour = mix(colour, WHITE, sun * 0.20 * stepped(crests(at)) * (0.35 + 0.65 * shelf));
    double const trough = smoothstep(0.42, 0.30, clouds().at({at.x * 0.6, at.y * 1.4}, 90.0));
    colour = shade(colour, 1.0 - 0.10 * stepped(trough));
    if (theme.quay > 0.0) return shade(colour, depth < 5.0 ? 0.62 : 1.0); // the wall's shadow
    return mix(colour, WHITE, stepped(foam(at, depth)));
}

Colour shore_colour(Theme const& theme, Colour land, Point at, double depth) {
    if (theme.quay > 0.0) return quay_colour(theme, land, at, depth);
    Colour const dry = shade(theme.shore, 1.0 + 0.10 * grain(at, 1.4));
    Colour const beach = mix(dry, shade(theme.shore, 0.78), stepped(smoothstep(-6.0, -0.5, depth)));
    double const hem = depth + 8.0 * (clouds().at(at, 34.0) - 0.5);
    return mix(land, beach, stepped(smoothstep(-17.0, -9.0, hem)));
}
