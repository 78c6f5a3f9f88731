#include "track_compiler/ground_painter.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"
#include "track_compiler/texture.h"
#include "track_compiler/things.h"

#include <array>

namespace {

Dab container(SceneryItem const& item, Spot const& spot) {
    constexpr std::array<Colour, 5> PAINTS{{{0.72F, 0.25F, 0.18F},
                                            {0.16F, 0.36F, 0.56F},
                                            {0.24F, 0.48F, 0.34F},
                                            {0.82F, 0.58F, 0.18F},
                                            {0.62F, 0.64F, 0.66F}}};
    Colour const paint = PAINTS[static_cast<std::size_t>(whim(item, 0) * 5.0) % PAINTS.size()];
    double const rib = std::remainder(spot.x, 4.0) > 0.0 ? 1.06 : 0.9;
    bool const frame = spot.outside > -1.4;
    return {shade(paint, frame ? 0.7 : rib), coverage(spot.outside)};
}

Dab bales(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    double const in_bale = std::remainder(spot.x, 11.0);
    bool const gap = std::fabs(in_bale) > 4.9;
    bool const string = std::fabs(std::fabs(in_bale) - 2.2) < 0.4;
    double const straw = 0.2 * (clouds().at(item.at + Point{spot.x, 3.0 * spot.y}, 12.0) - 0.5);
    Colour const yellow{0.86F, 0.72F, 0.36F};
    Colour colour = shade(yellow, gap ? 0.55 : string ? 0.8 : 1.0 + straw);
    colour = mix(colour, WHITE, 0.7 * theme.snow * (gap ? 0.0 : 1.0));
    return {colour, coverage(spot.outside)};
}

Dab tyres(Theme const& theme, Spot const& spot) {
    constexpr double PITCH = 6.0;
    Point const corner{spot.x + spot.half_long, spot.y + spot.half_wide};
    Point const stack{std::floor(corner.x / PITCH), std::floor(corner.y / PITCH)};
    Point const from = corner - PITCH * stack - Point{PITCH / 2.0, PITCH / 2.0};
    double const away = length(from);
    if (away > 3.0) return {{0.08F, 0.08F, 0.09F}, 0.8 * coverage(spot.outside)};
    double const group = std::floor((stack.x + stack.y) / 4.0);
    bool const painted = std::remainder(group, 2.0) != 0.0;
    Colour const rubber = painted ? theme.kerb_white : theme.kerb_red;
    double const light = dot(from, towards_light(theme)) / 3.0;
    Colour const ring = away > 1.9 ? shade(rubber, 0.85 + 0.25 * light) : Colour{0.2F, 0.2F, 0.21F};
    Colour const hole{0.05F, 0.05F, 0.06F};
    return {away < 1.0 ? hole : ring, coverage(spot.outside)};
}

// A mast's head: a bright lens in a dark ring.
Dab lamp(Theme const& theme, SceneryItem const& item, Point offset) {
    double const away = length(offset);
    double const radius = std::min(4.0, item.length / 2.0);
    Colour const lens = mix(theme.lamp, WHITE, theme.dark > 0.0 ? 0.6 : 0.0);
    bool const bright = away < 0.6 * radius;
    Colour const ring{0.18F, 0.19F, 0.22F};
    return {bright ? lens : ring, coverage(away - radius), bright && theme.dark > 0.0};
}

} // namespace

Spot spot_of(Theme const& theme, SceneryItem const& item, Point offset) {
    bool const turned = item.width > item.length; // the longer side is across the angle
    Point const along = turned ? side_of(direction(item.angle)) : direction(item.angle);
    Spot spot{.x = dot(offset, along),
              .y = cross(along, offset),
              .half_long = std::max(item.length, item.width) / 2.0,
              .half_wide = std::min(item.length, item.width) / 2.0};
    spot.outside = std::max(std::fabs(spot.x) - spot.half_long, std::fabs(spot.y) - spot.half_wide);
    spot.light = dot(side_of(along), towards_light(theme));
    return spot;
}

bool is_round(SceneryKind kind) {
    return is_natural(kind) || kind == SceneryKind::lamp || kind == SceneryKind::fountain ||
           kind == SceneryKind::lighthouse;
}

Dab built_thing(Theme const& theme, SceneryItem const& item, Point offset, double front) {
    Spot const spot = spot_of(theme, item, offset);
    switch (item.kind) {
    case SceneryKind::house:
        return house(theme, item, spot);
    case SceneryKind::shed:
        return shed(theme, spot);
    case SceneryKind::stand:
        return stand(theme, spot, front);
    case SceneryKind::container:
        return container(item, spot);
    case SceneryKind::boat:
        return boat(theme, item, spot);
    case SceneryKind::hay:
        return bales(theme, item, spot);
    case SceneryKind::tyres:
        return tyres(theme, spot);
    case SceneryKind::car:
        return parked_car(theme, item, spot);
    case SceneryKind::tent:
        return tent(theme, item, spot);
    case SceneryKind::crane:
        return crane(theme, spot);
    case SceneryKind::pier:
        return pier(theme, item, spot);
    case SceneryKind::digger:
        return digger(theme, spot);
    case SceneryKind::logs:
        return logs(theme, item, spot);
    case SceneryKind::board:
        return board(theme, item, spot);
    case SceneryKind::flag:
        return flag(spot);
    case SceneryKind::banner:
        return banner(theme, item, spot);
    case SceneryKind::fountain:
        return fountain(theme, item, offset);
    case SceneryKind::lighthouse:
        return lighthouse(theme, item, offset);
    default:
        return lamp(theme, item, offset);
    }
}
