#include "track_compiler/land_painter.h"

#include "track_compiler/grain.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"
#include "track_compiler/water_painter.h"

#include <numbers>

namespace {

// The four ways in which a farmer uses a field; which one is the field's own affair.
Colour field_colour(Theme const& theme, GroundArea const& area, Point at) {
    Point const hem = area.corners[1] - area.corners[0];
    Point const along = 1.0 / std::max(1e-9, length(hem)) * hem;
    // Furrows bend a little with the ground.
    double const across = cross(along, at - area.corners[0]) + 5.0 * clouds().at(at, 160.0);
    double const use = area_whim(area);
    double const soft = 0.10 * (stepped(wide_clouds(at, 60.0)) - 0.5);
    double const pitch = use < 0.5 ? 7.0 : 4.5;
    double const ridge = whole(std::sin(across * 2.0 * std::numbers::pi / pitch) * 2.0 + 0.5);
    double const crop = whole(across / 42.0);
    double tone = 1.0 + soft + 0.06 * ridge + 0.08 * grain(at, 1.3);
    if (use < 0.3) return shade(theme.field, tone + 0.10 * line_distance(crop, 2.0) - 0.05);
    bool const wheel =
        line_distance(across - 3.0, 42.0) < 1.0 || line_distance(across + 3.0, 42.0) < 1.0;
    if (wheel) tone *= 0.84;
    if (use < 0.6) return shade(mix(theme.field, theme.leaf_light, 0.62), tone);
    if (use < 0.8) return shade(mix(theme.field, theme.shore, 0.5), tone);
    return shade(mix(theme.field, theme.road_edge, 0.55), 0.9 * tone);
}

Colour plaza_colour(Theme const& theme, Point at) {
    bool const joint = on_lines(at.x, 16.0, 0.6) || on_lines(at.y, 16.0, 0.6);
    auto const slab = [](double value) {
        return static_cast<std::uint32_t>(whole(value / 16.0) + 4096.0);
    };
    double const tone = 0.97 + 0.06 * stepped(chance(slab(at.x), slab(at.y), 3));
    double const stain = stepped(wide_clouds(at, 80.0));
    return shade(theme.plaza, (joint ? 0.84 : tone) - 0.10 * stain + 0.05 * grain(at, 1.2));
}

Colour rocks_colour(Theme const& theme, Point at) {
    double const strata = std::sin(at.y / 5.0 + 9.0 * clouds().at(at, 120.0));
    double const crack = cracks().at(at, 30.0);
    double const lit =
        0.16 * (clouds().at(at, 30.0) - clouds().at(at + Point{1.5, 1.5}, 30.0)) / 0.05;
    return shade(theme.rocks, 1.0 + 0.06 * whole(strata * 2.5) - 0.28 * stepped(crack) +
                                  std::clamp(lit, -0.2, 0.2) + 0.08 * grain(at, 1.5));
}

Colour sand_colour(Theme const& theme, Point at) {
    double const soft = stepped(wide_clouds(at, 60.0)) - 0.5;
    double const wave = std::sin(at.y / 2.2 + at.x / 9.0 + 14.0 * clouds().at(at, 90.0));
    return shade(theme.sand, 1.0 + 0.10 * soft + 0.025 * whole(2.0 * wave) + 0.07 * grain(at, 1.1));
}

Colour area_colour(Theme const& theme, GroundArea const& area, Point at) {
    double const soft = stepped(wide_clouds(at, 60.0)) - 0.5;
    switch (area.kind) {
    case GroundKind::water:
        break;
    case GroundKind::sand:
        return sand_colour(theme, at);
    case GroundKind::gravel:
        return shade(theme.gravel,
                     1.0 + 0.12 * soft + 0.14 * grain(at, 2.6) + 0.12 * grain(at, 1.2));
    case GroundKind::field:
        return field_colour(theme, area, at);
    case GroundKind::plaza:
        return plaza_colour(theme, at);
    case GroundKind::ice:
        return mix(shade(theme.ice, 1.0 + 0.12 * soft), WHITE, 0.6 * stepped(cracks().at(at, 55)));
    case GroundKind::woods:
        return shade(theme.woods, 1.0 + 0.3 * soft + 0.2 * grain(at, 1.8));
    case GroundKind::rocks:
        return rocks_colour(theme, at);
    }
    return theme.ground_light;
}

// Flowers stand in drifts, each in a square of its own.
Colour with_flowers(Theme const& theme, Point at, Colour colour) {
    constexpr double SQUARE = 4.0; // cells
    double const drift = smoothstep(0.52, 0.74, wide_clouds({at.y, -at.x}, 120.0));
    if (drift <= 0.0) return colour;
    Point const square{whole(at.x / SQUARE), whole(at.y / SQUARE)};
    auto const draw = [&](std::uint32_t what) {
        return chance(static_cast<std::uint32_t>(square.x + 4096.0),
                      static_cast<std::uint32_t>(square.y + 4096.0), what);
    };
    if (draw(21) > 0.55 * theme.flowers * drift) return colour;
    Point const head = SQUARE * (square + Point{0.25 + 0.5 * draw(22), 0.25 + 0.5 * draw(23)});
    Colour const petals = clouds().at(at, 300.0) > 0.5 ? theme.bloom : mix(theme.bloom, WHITE, 0.8);
    return mix(colour, petals, 0.9 * coverage(distance(at, head) - 0.4 - 0.5 * draw(24)));
}

// Tufts are small dark strokes with light tips between them; flowers stand in drifts.
Colour grown(Theme const& theme, Point at, Colour colour) {
    double const dense = wide_clouds({at.y, at.x}, 70.0);
    if (theme.tufts > 0.0) {
        double const tuft = clouds().at({at.x * 1.5, at.y * 0.8}, 17.0);
        double const dark = stepped(smoothstep(0.58, 0.66, tuft)) * stepped(dense);
        double const bright = stepped(smoothstep(0.38, 0.30, tuft)) * stepped(1.0 - dense);
        double const blade = grain({1.6 * at.x, 0.8 * at.y}, 1.6);
        colour = shade(colour, 1.0 + theme.tufts * (0.09 * bright - 0.13 * dark + 0.10 * blade));
    }
    if (theme.flowers > 0.0) colour = with_flowers(theme, at, colour);
    return colour;
}

// Grass, sand or snow, with what the theme draws on it.
Colour open_colour(Theme const& theme, Point at) {
    double const tone = stepped(0.7 * wide_clouds(at, 170.0) + 0.3 * wide_clouds(at, 34.0));
    Colour colour = mix(theme.ground_dark, theme.ground_light, tone);
    if (theme.groves > 0.0) { // fallen leaves and shade
        colour = mix(colour, theme.woods, 0.6 * theme.groves * stepped(grove(at)));
    }
    if (theme.mow > 0.0) {
        bool const odd = line_distance(at.x + at.y, 72.0) < 18.0;
        colour = shade(colour, odd ? 1.0 - 0.06 * theme.mow : 1.0 + 0.04 * theme.mow);
    }
    if (theme.ripples > 0.0) {
        double const wave = std::sin(at.x / 7.0 + at.y / 3.0 + 26.0 * clouds().at(at, 260.0));
        colour = shade(colour, 1.0 + 0.035 * theme.ripples * whole(wave * 2.0 + 0.5));
    }
    if (theme.cracks > 0.0) {
        double const whole = smoothstep(0.30, 0.52, wide_clouds(at, 240.0));
        double const crack = stepped(cracks().at(at, 42.0)) * (0.35 + 0.65 * whole);
        colour = shade(colour, 1.0 - 0.3 * theme.cracks * crack);
    }
    return grown(theme, at, colour);
}

// A farmer's or a mason's hem is straight, nature's is bent out of the polygon and frayed.
bool is_built(GroundArea const& area, Theme const& theme) {
    return area.kind == GroundKind::plaza || area.kind == GroundKind::field ||
           (area.kind == GroundKind::water && theme.quay > 0.0);
}

Colour on_area(PaintSource const& source, Colour land, GroundArea const& area, Point at,
               double depth) {
    Theme const& theme = source.theme;
    switch (area.kind) {
    case GroundKind::plaza: {
        bool const edging = depth > 0.0 && depth < 2.5;
        return mix(land, edging ? shade(theme.plaza, 1.18) : plaza_colour(theme, at),
                   coverage(-depth));
    }
    case GroundKind::water:
        return depth > 0.0 ? mix(shade(theme.shore, 0.76), water_colour(theme, at, depth),
                                 smoothstep(0.0, 1.5, depth))
                           : shore_colour(theme, land, at, depth);
    case GroundKind::field:
        return mix(land, area_colour(theme, area, at), stepped(smoothstep(-2.0, 1.0, depth)));
    default: {
        double const frayed = depth + 44.0 * (clouds().at(at, 120.0) - 0.5);
        return mix(land, area_colour(theme, area, at), stepped(smoothstep(-6.0, 9.0, frayed)));
    }
    }
}

} // namespace

Colour land_colour(PaintSource const& source, AreaField const& areas, Point at, double edge) {
    Theme const& theme = source.theme;
    Colour colour = open_colour(theme, at);
    Point const bent =
        at + Point{56.0 * (clouds().at(at, 190.0) - 0.5) + 16.0 * (clouds().at(at, 60.0) - 0.5),
                   56.0 * (clouds().at({at.y, at.x}, 190.0) - 0.5) +
                       16.0 * (clouds().at({at.y, at.x}, 60.0) - 0.5)};
    AreaPlace place = area_at(areas, source.course, at);
    if (place.area == nullptr || !is_built(*place.area, theme)) {
        place = area_at(areas, source.course, bent);
        if (place.area != nullptr && is_built(*place.area, theme)) place = {};
    }
    bool const paved =
        place.area != nullptr && place.area->kind == GroundKind::plaza && place.depth > 0.0;
    if (place.area != nullptr) colour = on_area(source, colour, *place.area, at, place.depth);
    if (edge < 40.0 && !paved) {
        double const away = edge + 26.0 * (clouds().at(at, 46.0) - 0.5);
        colour = mix(theme.verge, colour, stepped(smoothstep(9.0, 30.0, away)));
    }
    return shade(colour, 1.0 + theme.grain * (0.06 * grain(at, 1.3) + 0.06 * grain(at, 4.0)));
}
