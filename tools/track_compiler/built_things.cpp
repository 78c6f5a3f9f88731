#include "track_compiler/ground_painter.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"
#include "track_compiler/texture.h"
#include "track_compiler/things.h"

#include <array>

namespace {

// A pixel in a thing's own terms: x along its length, y across it, both from its middle.
struct Spot {
    double x = 0.0;
    double y = 0.0;
    double outside = 0.0; // distance to its rectangle, negative within
    double light = 0.0;   // of a slope that falls towards +y, -1..1
};

Spot spot_of(Theme const& theme, SceneryItem const& item, Point offset) {
    Point const along = direction(item.angle);
    Spot spot{.x = dot(offset, along), .y = cross(along, offset)};
    spot.outside =
        std::max(std::fabs(spot.x) - item.length / 2.0, std::fabs(spot.y) - item.width / 2.0);
    spot.light = dot(side_of(along), towards_light(theme));
    return spot;
}

// Roofs slope to both long sides; a broad hall has several of them side by side.
Dab house(Theme const& theme, SceneryItem const& item, Spot spot) {
    bool const turned = item.width > item.length;
    if (turned) {
        std::swap(spot.x, spot.y);
        spot.light = std::sqrt(std::max(0.0, 1.0 - spot.light * spot.light));
    }
    double const wide = turned ? item.length : item.width;
    double const roofs = std::max(1.0, std::round(wide / 56.0));
    double const bay = wide / roofs;
    double const across = spot.y + wide / 2.0;
    double const in_bay = across - bay * std::floor(across / bay) - bay / 2.0;
    double const facing = in_bay > 0.0 ? spot.light : -spot.light;
    Colour const tile = mix(theme.roof, theme.wall, 0.35 * whim(item, 0));
    double const course = std::remainder(std::fabs(in_bay), 2.6) > 0.9 ? -0.07 : 0.0;
    double const patch = 0.10 * (clouds().at(item.at + Point{spot.x, spot.y}, 26.0) - 0.5);
    bool glows = false;
    Colour colour = shade(tile, 0.92 + 0.24 * facing + course + patch);
    double const snow = smoothstep(0.30, 0.42, clouds().at(item.at + Point{spot.x, spot.y}, 44.0));
    colour = mix(colour, shade(WHITE, 0.9 + 0.1 * facing), theme.snow * snow);
    if (std::fabs(in_bay) < 0.8) colour = shade(mix(colour, WHITE, 0.35), 1.05); // ridge
    if (spot.outside > -1.2) colour = shade(colour, 0.6);                        // eaves
    // Roof windows, lit at night; a chimney near one gable.
    double const window_x = std::remainder(spot.x + 6.0, 20.0);
    double const window_y = std::fabs(in_bay) - bay / 4.0;
    bool const pane = std::fabs(window_x) < 3.0 && std::fabs(window_y) < 2.4;
    double const long_side = turned ? item.width : item.length;
    if (pane && std::fabs(spot.x) < long_side / 2.0 - 8.0) {
        bool const frame = std::fabs(window_x) > 2.2 || std::fabs(window_y) > 1.6;
        bool const lit =
            theme.dark > 0.0 &&
            whim(item, static_cast<std::uint32_t>(40.0 + std::floor((spot.x + 16.0) / 20.0))) < 0.7;
        Colour const glass = lit ? mix(theme.lamp, WHITE, 0.2) : Colour{0.42F, 0.53F, 0.62F};
        colour = frame ? shade(theme.wall, 0.8) : glass;
        glows = lit && !frame;
    }
    double const chimney = std::max(std::fabs(spot.x - 0.3 * long_side), std::fabs(in_bay - 4.0));
    if (chimney < 2.8)
        colour = chimney < 1.5 ? Colour{0.16F, 0.14F, 0.14F} : shade(theme.stone, 0.95);
    return {colour, coverage(spot.outside), glows};
}

Dab shed(Theme const& theme, SceneryItem const&, Spot const& spot) {
    double const facing = spot.y > 0.0 ? spot.light : -spot.light;
    double const rib = std::remainder(spot.x, 3.0) > 0.4 ? 0.06 : -0.03;
    Colour const metal = mix(theme.wall, theme.stone, 0.5);
    Colour colour = shade(metal, 0.88 + 0.2 * facing + rib);
    colour = mix(colour, shade(theme.roof, 0.9),
                 smoothstep(0.58, 0.7, clouds().at({spot.x, spot.y}, 40.0)));
    colour = mix(colour, WHITE, 0.8 * theme.snow);
    if (std::fabs(spot.y) < 0.7) colour = mix(colour, WHITE, 0.4);
    if (spot.outside > -1.0) colour = shade(colour, 0.6);
    return {colour, coverage(spot.outside)};
}

// Steps with a crowd, and a roof over the rows at the back.
Dab stand(Theme const& theme, SceneryItem const& item, Spot const& spot, double front) {
    constexpr std::array<Colour, 7> SHIRTS{{{0.86F, 0.22F, 0.2F},
                                            {0.95F, 0.8F, 0.25F},
                                            {0.2F, 0.42F, 0.8F},
                                            {0.95F, 0.95F, 0.93F},
                                            {0.28F, 0.62F, 0.35F},
                                            {0.9F, 0.52F, 0.2F},
                                            {0.35F, 0.25F, 0.4F}}};
    bool const turned = item.width > item.length;
    double const x = turned ? spot.y : spot.x;
    double const high = turned ? item.length : item.width;
    double const y = (turned ? -spot.x : spot.y) * front; // grows towards the road
    double const alpha = coverage(spot.outside);
    if (y < -0.12 * high) {
        bool const seam = std::fabs(std::remainder(x, 22.0)) < 0.5;
        double const slope = 1.02 + 0.25 * (y + 0.5 * high) / high;
        Colour colour = shade(mix(theme.roof, theme.wall, 0.1), seam ? 0.8 : slope);
        colour = mix(colour, WHITE, y > -0.12 * high - 1.6 ? 0.6 : 0.85 * theme.snow);
        return {spot.outside > -0.9 ? shade(colour, 0.7) : colour, alpha};
    }
    double const row = std::floor(y / 4.0);
    double const seat = std::floor(x / 3.2);
    Colour colour = shade(theme.wall, std::remainder(y, 4.0) > 0.8 ? 0.62 : 0.78);
    auto const number = [](double v) { return static_cast<std::uint32_t>(v + 4096.0); };
    double const person = chance(number(row), number(seat), 71);
    double const from = std::hypot(y - 4.0 * row - 2.0, x - 3.2 * seat - 1.6);
    bool const aisle = std::fabs(std::remainder(x, 44.0)) < 3.0;
    if (!aisle && person < 0.86 && from < 1.5) {
        Colour const shirt = SHIRTS[static_cast<std::size_t>(person * 97.0) % SHIRTS.size()];
        colour = from < 0.7 ? Colour{0.85F, 0.66F, 0.52F} : shirt;
    }
    if (y < -0.12 * high + 5.0) colour = shade(colour, 0.62); // under the roof's shadow
    if (spot.outside > -1.1) colour = shade(theme.wall, 0.95);
    return {colour, alpha};
}

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

// A hull with its bow towards +x, a deck of planks and a cabin.
Dab boat(Theme const& theme, SceneryItem const& item, Spot spot) {
    bool const turned = item.width > item.length;
    if (turned) std::swap(spot.x, spot.y);
    double const half_long = std::max(item.length, item.width) / 2.0;
    double const half_wide = std::min(item.length, item.width) / 2.0;
    double const t = std::clamp(spot.x / half_long, -1.0, 1.0);
    double const bow = t > 0.0 ? 1.0 - t * t * t : 1.0 - 0.18 * t * t;
    double const hull =
        std::max(std::fabs(spot.y) - half_wide * bow, std::fabs(spot.x) - half_long);
    Colour const paint = whim(item, 0) < 0.5 ? theme.roof : Colour{0.16F, 0.30F, 0.44F};
    Colour colour =
        shade(Colour{0.72F, 0.55F, 0.36F}, std::remainder(spot.y, 2.4) > 0.5 ? 0.92 : 1.05);
    if (hull > -2.4) colour = Colour{0.93F, 0.92F, 0.88F};
    if (hull > -1.0) colour = paint;
    double const cabin = std::max(std::fabs(spot.x + 0.45 * half_long) - 0.28 * half_long,
                                  std::fabs(spot.y) - 0.6 * half_wide);
    if (cabin < 0.0)
        colour = cabin > -1.2 ? Colour{0.3F, 0.36F, 0.42F} : Colour{0.95F, 0.95F, 0.93F};
    double const hatch = std::max(std::fabs(spot.x - 0.25 * half_long) - 0.16 * half_long,
                                  std::fabs(spot.y) - 0.4 * half_wide);
    if (hatch < 0.0) colour = shade(paint, hatch > -1.0 ? 0.6 : 0.9);
    return {colour, coverage(hull)};
}

Dab bales(Theme const& theme, SceneryItem const& item, Spot spot) {
    if (item.width > item.length) std::swap(spot.x, spot.y);
    double const in_bale = std::remainder(spot.x, 11.0);
    bool const gap = std::fabs(in_bale) > 4.9;
    bool const string = std::fabs(std::fabs(in_bale) - 2.2) < 0.4;
    double const straw = 0.2 * (clouds().at(item.at + Point{spot.x, 3.0 * spot.y}, 12.0) - 0.5);
    Colour const yellow{0.86F, 0.72F, 0.36F};
    Colour colour = shade(yellow, gap ? 0.55 : string ? 0.8 : 1.0 + straw);
    colour = mix(colour, WHITE, 0.7 * theme.snow * (gap ? 0.0 : 1.0));
    return {colour, coverage(spot.outside)};
}

Dab tyres(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    constexpr double PITCH = 6.0;
    Point const corner{spot.x + item.length / 2.0, spot.y + item.width / 2.0};
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

Dab built_thing(Theme const& theme, SceneryItem const& item, Point offset, double front) {
    Spot const spot = spot_of(theme, item, offset);
    switch (item.kind) {
    case SceneryKind::house:
        return house(theme, item, spot);
    case SceneryKind::shed:
        return shed(theme, item, spot);
    case SceneryKind::stand:
        return stand(theme, item, spot, front);
    case SceneryKind::container:
        return container(item, spot);
    case SceneryKind::boat:
        return boat(theme, item, spot);
    case SceneryKind::hay:
        return bales(theme, item, spot);
    case SceneryKind::tyres:
        return tyres(theme, item, spot);
    default:
        return lamp(theme, item, offset);
    }
}
