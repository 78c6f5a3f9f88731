#include "track_compiler/ground_painter.h"

#include "track_compiler/picture.h"
#include "track_compiler/texture.h"

#include <numbers>

namespace {

// Seen through a turned and a straight look-up the clouds' repetition cannot be made out.
double wide_clouds(Point at, double wave) {
    Point const turned{0.8 * at.x + 0.6 * at.y, 0.8 * at.y - 0.6 * at.x};
    double const sum = 0.6 * clouds().at(at, wave) + 0.4 * clouds().at(turned, 1.7 * wave);
    return smoothstep(0.25, 0.75, sum);
}

// -0.5..0.5 in a few steps: a texture of many levels is no finer to the eye, but makes the
// picture's file twice as large.
double grain(Point at, double wave) {
    double const value = speckle().at(at, wave);
    return std::floor(value * 6.0) / 5.0 - 0.5;
}

double stepped(double value) {
    return std::floor(value * 20.0 + 0.5) / 20.0;
}

// Lines of `width` cells, one every `spacing` cells.
bool on_lines(double value, double spacing, double width) {
    return std::fabs(std::remainder(value, spacing)) < width / 2.0;
}

Colour water_colour(Theme const& theme, Point at, double depth) {
    double const hollow = depth + 40.0 * (clouds().at(at, 90.0) - 0.5);
    Colour const deep =
        mix(theme.water_shallow, theme.water_deep, stepped(smoothstep(4.0, 80.0, hollow)));
    // Ripples lie across the light, longer than they are wide.
    double const swell = clouds().at({at.x * 0.5 + at.y * 0.15, at.y * 1.6}, 46.0);
    double const glint = smoothstep(0.60, 0.68, swell);
    double const trough = smoothstep(0.40, 0.32, swell);
    Colour const wavy =
        mix(shade(deep, 1.0 - 0.08 * stepped(trough)), WHITE, 0.14 * stepped(glint));
    double const lap = depth + 5.0 * (clouds().at(at, 22.0) - 0.5);
    double const foam = smoothstep(1.5, 3.0, lap) - smoothstep(3.5, 6.0, lap);
    double const second = smoothstep(9.0, 10.5, lap) - smoothstep(10.5, 13.0, lap);
    return mix(wavy, WHITE, 0.6 * foam + 0.22 * second);
}

Colour field_colour(Theme const& theme, Point at) {
    // Furrows bend a little with the ground; every few of them one crop gives way to another.
    double const across = 0.94 * at.y + 0.34 * at.x + 10.0 * clouds().at(at, 160.0);
    double const ridge = std::sin(across * 2.0 * std::numbers::pi / 7.0);
    double const crop = std::floor(across / 42.0);
    double const tone = 0.94 + 0.12 * std::fabs(std::remainder(crop, 2.0));
    return shade(theme.field, tone * (1.0 + 0.07 * std::floor(ridge * 2.0 + 0.5)));
}

Colour plaza_colour(Theme const& theme, Point at) {
    bool const joint = on_lines(at.x, 16.0, 0.6) || on_lines(at.y, 16.0, 0.6);
    double const slab = speckle().at({std::floor(at.x / 16.0), std::floor(at.y / 16.0)}, 11.0);
    double const stain = stepped(wide_clouds(at, 80.0));
    return shade(theme.plaza, (joint ? 0.86 : 0.97 + 0.06 * stepped(slab)) - 0.08 * stain);
}

Colour rocks_colour(Theme const& theme, Point at) {
    double const strata = std::sin(at.y / 5.0 + 9.0 * clouds().at(at, 120.0));
    double const crack = cracks().at(at, 30.0);
    return shade(theme.rocks, 1.0 + 0.06 * std::floor(strata * 2.5) - 0.28 * stepped(crack));
}

Colour area_colour(Theme const& theme, GroundKind kind, Point at, double depth) {
    double const soft = stepped(wide_clouds(at, 60.0)) - 0.5;
    switch (kind) {
    case GroundKind::water:
        return water_colour(theme, at, depth);
    case GroundKind::sand:
        return shade(theme.sand,
                     1.0 + 0.08 * soft +
                         0.025 * std::floor(2.0 * std::sin(at.y / 2.2 + at.x / 9.0 +
                                                           14.0 * clouds().at(at, 90))));
    case GroundKind::gravel:
        return shade(theme.gravel, 1.0 + 0.12 * soft + 0.16 * grain(at, 150.0));
    case GroundKind::field:
        return field_colour(theme, at);
    case GroundKind::plaza:
        return plaza_colour(theme, at);
    case GroundKind::ice:
        return mix(shade(theme.ice, 1.0 + 0.1 * soft), WHITE, 0.6 * stepped(cracks().at(at, 55)));
    case GroundKind::woods:
        return shade(theme.woods, 1.0 + 0.3 * soft + 0.1 * grain(at, 260.0));
    case GroundKind::rocks:
        return rocks_colour(theme, at);
    }
    return theme.ground_light;
}

// Grass, sand or snow, with what the theme draws on it.
Colour open_colour(Theme const& theme, Point at) {
    double const tone = stepped(0.7 * wide_clouds(at, 170.0) + 0.3 * wide_clouds(at, 34.0));
    Colour colour = mix(theme.ground_dark, theme.ground_light, tone);
    if (theme.mow > 0.0) {
        bool const odd = std::fmod(std::floor((at.x + at.y) / 36.0), 2.0) == 0.0;
        colour = shade(colour, odd ? 1.0 - 0.06 * theme.mow : 1.0 + 0.04 * theme.mow);
    }
    if (theme.ripples > 0.0) {
        double const wave = std::sin(at.x / 7.0 + at.y / 3.0 + 26.0 * clouds().at(at, 260.0));
        colour = shade(colour, 1.0 + 0.035 * theme.ripples * std::floor(wave * 2.0 + 0.5));
    }
    if (theme.cracks > 0.0) {
        colour = shade(colour, 1.0 - 0.3 * theme.cracks * stepped(cracks().at(at, 42.0)));
    }
    // Tufts are small dark strokes, blades with a light tip between them.
    double const tuft = clouds().at({at.x * 1.5, at.y * 0.8}, 17.0);
    double const dense = wide_clouds({at.y, at.x}, 70.0);
    double const dark = stepped(smoothstep(0.60, 0.66, tuft)) * stepped(dense);
    double const bright = stepped(smoothstep(0.36, 0.30, tuft)) * stepped(1.0 - dense);
    colour = shade(colour, 1.0 + theme.tufts * (0.09 * bright - 0.13 * dark));
    return colour;
}

Colour land_colour(PaintSource const& source, AreaField const& areas, Point at, double edge) {
    Theme const& theme = source.theme;
    Colour colour = open_colour(theme, at);
    // Shores and hems are bent out of the polygon's straight lines.
    Point const bent = at + Point{64.0 * (clouds().at(at, 190.0) - 0.5),
                                  64.0 * (clouds().at({at.y, at.x}, 190.0) - 0.5)};
    AreaPlace const place = area_at(areas, source.course, bent);
    bool const built = place.area != nullptr && place.area->kind == GroundKind::plaza;
    if (built) {
        double const depth = area_at(areas, source.course, at).depth; // masons build straight
        bool const edging = depth > 0.0 && depth < 2.5;
        Colour const slabs = edging ? shade(theme.plaza, 1.18) : plaza_colour(theme, at);
        colour = mix(colour, slabs, coverage(-depth));
    } else if (place.area != nullptr && place.area->kind == GroundKind::water) {
        colour = mix(colour, theme.shore, stepped(smoothstep(-14.0, -5.0, place.depth)));
        Colour const wet = mix(shade(theme.shore, 0.86), water_colour(theme, at, place.depth),
                               smoothstep(0.0, 1.5, place.depth));
        if (place.depth > -2.5) colour = wet;
    } else if (place.area != nullptr) {
        // A farmer's hem is straight, nature's is frayed.
        bool const farmed = place.area->kind == GroundKind::field;
        double const frayed = farmed ? 0.0 : 44.0 * (clouds().at(at, 120.0) - 0.5);
        colour = mix(colour, area_colour(theme, place.area->kind, at, place.depth),
                     stepped(smoothstep(-5.0, farmed ? 3.0 : 9.0, place.depth + frayed)));
    }
    if (edge < 40.0 && !built) {
        double const away = edge + 26.0 * (clouds().at(at, 46.0) - 0.5);
        colour = mix(theme.verge, colour, stepped(smoothstep(9.0, 30.0, away)));
    }
    return shade(colour, 1.0 + 0.14 * theme.grain * grain(at, 190.0));
}

Colour road_colour(PaintSource const& source, Point at, RoadPlace const& place) {
    Theme const& theme = source.theme;
    double const racing = source.racing[source.line.index_at(place.along)];
    double const off = std::fabs(place.lateral - racing) + 10.0 * (clouds().at(at, 120.0) - 0.5);
    // Two wheel tracks with a paler strip between them.
    double const broad = 1.0 - smoothstep(6.0, 30.0, off);
    double const tracks = 1.0 - smoothstep(1.0, 7.0, std::fabs(std::fabs(off) - 7.0));
    Colour colour = mix(theme.road, theme.road_worn, stepped(0.55 * broad + 0.3 * tracks));
    double const away = -place.edge + 9.0 * (clouds().at(at, 30.0) - 0.5);
    colour = mix(colour, theme.road_edge, stepped(0.75 * (1.0 - smoothstep(0.0, 13.0, away))));
    double const patch = stepped(wide_clouds(at, 90.0)) - 0.5;
    colour = shade(colour, 1.0 + theme.road_grain * (0.10 * patch + 0.12 * grain(at, 150.0)));
    double const line = std::fabs(-place.edge - 4.0) - 1.0; // the painted edge of a made road
    double const left = 0.85 * theme.edge_line * smoothstep(0.28, 0.42, clouds().at(at, 50.0));
    return mix(colour, theme.line, stepped(left) * coverage(line));
}

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

// Is the place in the shadow of the rim? It stands a few cells high.
bool in_rim_shadow(PaintSource const& source, Point at, double edge) {
    constexpr double HEIGHT = 5.0; // cells
    double const fall = HEIGHT * std::min(1.2, source.theme.shadow_length);
    if (std::fabs(edge) > 16.0 + fall) return false;
    Point const light = towards_light(source.theme);
    for (double step = 0.5; step <= 1.0; step += 0.5) {
        RoadPlace const caster = road_at(source.field, at + step * fall * light);
        if (surface_at(source.line, caster, source.theme.rim_width) == Surface::rim) return true;
    }
    return false;
}

} // namespace

Point towards_light(Theme const& theme) {
    return -1.0 * direction(theme.shadow_angle * std::numbers::pi / 180.0);
}

Colour ground_colour(PaintSource const& source, AreaField const& areas, Point at) {
    Theme const& theme = source.theme;
    RoadPlace const place = road_at(source.field, at);
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
        colour = land_colour(source, areas, at, place.edge);
        break;
    }
    return in_rim_shadow(source, at, place.edge) ? shade(colour, 1.0 - 0.8 * theme.shadow) : colour;
}
