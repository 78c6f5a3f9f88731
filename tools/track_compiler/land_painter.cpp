#include "track_compiler/land_painter.h"

#include "track_compiler/grain.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"
#include "track_compiler/water_painter.h"

#include <numbers>

namespace {

// The five ways in which a farmer uses a field; which one is the field's own affair.
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
    if (use < 0.45) return shade(mix(theme.field, theme.leaf_light, 0.62), tone);
    if (use < 0.6) return shade(mix(theme.field, theme.bloom, 0.7), tone);
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
        return shade(theme.woods, 1.0 + 0.3 * soft + 0.12 * grain(at, 1.6));
    case GroundKind::rocks:
        return rocks_colour(theme, at);
    }
    return theme.ground_light;
}

// Flowers stand in drifts, each in a square of its own.
Colour with_flowers(Theme const& theme, Tones const& tones, Point at, Colour colour) {
    constexpr double SQUARE = 3.4; // cells
    if (tones.drift <= 0.0F) return colour;
    Point const square{whole(at.x / SQUARE), whole(at.y / SQUARE)};
    auto const draw = [&](std::uint32_t what) {
        return chance(static_cast<std::uint32_t>(square.x + 4096.0),
                      static_cast<std::uint32_t>(square.y + 4096.0), what);
    };
    if (draw(21) > 0.34 * theme.flowers * static_cast<double>(tones.drift)) return colour;
    Point const head = SQUARE * (square + Point{0.12 + 0.76 * draw(22), 0.12 + 0.76 * draw(23)});
    Colour const petals = clouds().at(at, 300.0) > 0.5 ? theme.bloom : mix(theme.bloom, WHITE, 0.8);
    return mix(colour, petals, 0.9 * coverage(distance(at, head) - 0.4 - 0.5 * draw(24)));
}

// Tufts are small dark strokes with light tips between them; flowers stand in drifts.
Colour grown(Theme const& theme, Tones const& tones, Point at, Colour colour) {
    if (theme.tufts > 0.0) {
        auto const dense = static_cast<double>(tones.dense);
        double const tuft = clouds().at({at.x * 1.5, at.y * 0.8}, 17.0);
        double const dark = stepped(smoothstep(0.58, 0.66, tuft)) * stepped(dense);
        double const bright = stepped(smoothstep(0.38, 0.30, tuft)) * stepped(1.0 - dense);
        double const blade = grain({1.6 * at.x, 0.8 * at.y}, 1.6);
        colour = shade(colour, 1.0 + theme.tufts * (0.09 * bright - 0.13 * dark + 0.10 * blade));
    }
    if (theme.flowers > 0.0) colour = with_flowers(theme, tones, at, colour);
    return colour;
}

// Grass, sand or snow, with what the theme draws on it.
Colour open_colour(Theme const& theme, Tones const& tones, Point at) {
    double const tone = stepped(0.7 * static_cast<double>(tones.light) +
                                0.3 * smoothstep(0.25, 0.75, clouds().at(at, 34.0)));
    Colour colour = mix(theme.ground_dark, theme.ground_light, tone);
    if (theme.groves > 0.0) { // fallen leaves and shade
        colour = mix(colour, theme.woods,
                     0.6 * theme.groves * stepped(static_cast<double>(tones.grove)));
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
    return grown(theme, tones, at, colour);
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

// The patch that counts at a place: a built one by its own outline, nature's by a bent one.
AreaPlace patch_at(PaintSource const& source, Land const& land, Tones const& tones, Point at) {
    AreaPlace place = area_at(land.areas, source.course, at);
    if (place.area != nullptr && is_built(*place.area, source.theme)) return place;
    Point const bend{static_cast<double>(tones.bend_x), static_cast<double>(tones.bend_y)};
    place = area_at(land.areas, source.course, at + bend);
    bool const crooked = place.area != nullptr && is_built(*place.area, source.theme);
    return crooked ? AreaPlace{} : place;
}

// Sleepers in a bed of gravel, and two rails.
Colour rails_colour(Theme const& theme, LaneSpot const& spot, Point at, Colour ground) {
    constexpr double HALF_GAUGE = 4.2; // cells
    auto const off = static_cast<double>(spot.off);
    double const bed = smoothstep(10.0, 7.5, off + 3.0 * (clouds().at(at, 14.0) - 0.5));
    Colour colour = mix(ground, shade(theme.gravel, 0.9 + 0.3 * grain(at, 1.2)), bed);
    if (off < 6.6 && on_lines(static_cast<double>(spot.along), 5.0, 2.2)) {
        colour = shade({0.36F, 0.28F, 0.22F}, 1.0 + 0.2 * grain(at, 1.5));
    }
    double const rail = std::fabs(off - HALF_GAUGE) - 0.55;
    return mix(colour, {0.72F, 0.72F, 0.74F}, coverage(rail));
}

// Earth that wheels have laid bare, with grass between them.
Colour ruts_colour(Theme const& theme, double off, double half, Point at, Colour ground) {
    Colour const earth =
        shade(mix(theme.sand, theme.road_edge, 0.35), 0.96 + 0.14 * grain(at, 1.4));
    double const ragged = off + 3.0 * (clouds().at(at, 18.0) - 0.5);
    double const worn = smoothstep(half + 1.0, half - 1.5, ragged);
    double const grass = 0.6 * smoothstep(0.28 * half, 0.1 * half, ragged);
    return mix(ground, earth, stepped(worn * (1.0 - grass) * 0.9));
}

// Where a stream goes under the road: a wall of stone with a dark mouth in it. `gap` is the
// distance to the road's rim in cells.
Colour culvert_colour(Theme const& theme, double off, double half, double gap, Point at,
                      Colour water) {
    constexpr double DEEP = 9.0;  // cells of wall before the rim
    constexpr double WINGS = 5.0; // of wall beside the stream
    if (gap > DEEP || off > half + WINGS) return water;
    if (off < half - 1.0) {
        double const arch = DEEP - 4.0 * (off / half) * (off / half);
        return mix(shade(theme.water_deep, 0.25), water, smoothstep(arch - 3.0, arch, gap));
    }
    bool const joint = on_lines(gap, 4.5, 0.8) || on_lines(off, 6.0, 0.8);
    return shade(theme.stone, (joint ? 0.7 : 0.98) + 0.12 * grain(at, 1.6));
}

Colour on_lane(Theme const& theme, Lane const& lane, LaneSpot const& spot, Point at,
               Colour ground) {
    auto const off = static_cast<double>(spot.off);
    double const half = lane.width / 2.0;
    switch (lane.kind) {
    case LaneKind::track:
        return ruts_colour(theme, off, half, at, ground);
    case LaneKind::paved: {
        bool const kerb = off > half - 1.4;
        Colour const slabs = kerb ? shade(theme.plaza, 1.16) : plaza_colour(theme, at);
        return mix(ground, slabs, coverage(off - half));
    }
    case LaneKind::rails:
        return rails_colour(theme, spot, at, ground);
    case LaneKind::stream: {
        double const bank = half - off + 3.0 * (clouds().at(at, 24.0) - 0.5);
        Colour const wet = mix(ground, shade(theme.shore, 0.85), smoothstep(-4.0, -1.0, bank));
        return mix(wet, water_colour(theme, at, 4.0 + 2.0 * bank), coverage(-bank));
    }
    }
    return ground;
}

// A stream keeps its water up to the road, where the verge would cover it, and goes under it there.
Colour under_road(PaintSource const& source, Lane const& lane, LaneSpot const& spot, Point at,
                  double edge, Colour ground) {
    auto const off = static_cast<double>(spot.off);
    double const gap = edge - source.theme.rim_width;
    double const half = lane.width / 2.0;
    Colour const water = on_lane(source.theme, lane, spot, at, ground);
    return culvert_colour(source.theme, off, half, gap, at, water);
}

} // namespace

Land measure_land(PaintSource const& source) {
    int const width = source.track.width;
    int const height = source.track.height;
    return {.areas = measure_areas(source.course, width, height),
            .lanes = measure_lanes(source.course, width, height),
            .tones = measure_tones(width, height)};
}

Colour land_colour(PaintSource const& source, Land const& land, Point at, double edge) {
    Theme const& theme = source.theme;
    Tones const tones = tones_at(land.tones, at);
    AreaPlace const place = patch_at(source, land, tones, at);
    bool const paved =
        place.area != nullptr && place.area->kind == GroundKind::plaza && place.depth > 0.0;
    bool const hidden = place.area != nullptr && place.depth > 34.0; // the patch covers the ground
    Colour colour = hidden ? theme.ground_light : open_colour(theme, tones, at);
    if (place.area != nullptr) colour = on_area(source, colour, *place.area, at, place.depth);
    bool const afloat =
        place.area != nullptr && place.area->kind == GroundKind::water && place.depth > -1.0;
    if (LaneSpot const spot = lane_at(land.lanes, at); spot.lane != 0 && !afloat) {
        Lane const& lane = source.course.lanes[spot.lane - 1U];
        constexpr double FADE = 22.0; // cells in which a lane loses itself at its end
        double const left = smoothstep(0.0, FADE, static_cast<double>(spot.end));
        colour = mix(colour, on_lane(theme, lane, spot, at, colour), left);
    }
    if (edge < 40.0 && !paved) {
        double const away = edge + 26.0 * (clouds().at(at, 46.0) - 0.5);
        colour = mix(theme.verge, colour, stepped(smoothstep(9.0, 30.0, away)));
    }
    if (LaneSpot const spot = lane_at(land.lanes, at); spot.lane != 0 && edge < 40.0) {
        Lane const& lane = source.course.lanes[spot.lane - 1U];
        if (lane.kind == LaneKind::stream) {
            colour = under_road(source, lane, spot, at, edge, colour);
        }
    }
    return shade(colour, 1.0 + theme.grain * (0.06 * grain(at, 1.3) + 0.06 * grain(at, 4.0)));
}
