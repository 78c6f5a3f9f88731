// Boats and the piers that they lie at.

#include "track_compiler/grain.h"
#include "track_compiler/picture.h"
#include "track_compiler/things.h"

#include <array>

namespace {

constexpr Colour CREAM{0.95F, 0.94F, 0.90F};
constexpr Colour GLASS{0.20F, 0.30F, 0.40F};
constexpr Colour TEAK{0.72F, 0.54F, 0.35F};

double box_distance(Spot const& spot, double x, double half_long, double half_wide) {
    return std::max(std::fabs(spot.x - x) - half_long, std::fabs(spot.y) - half_wide);
}

Colour planks(Spot const& spot, Colour wood) {
    return shade(wood, on_lines(spot.y, 2.2, 0.5) ? 0.84 : 1.03);
}

// A cabin with a dark windscreen ahead of it and a light roof.
Colour with_cabin(Spot const& spot, Colour deck) {
    double const l = spot.half_long;
    double const screen = box_distance(spot, 0.02 * l, 0.16 * l, 0.62 * spot.half_wide);
    if (screen < 0.0) deck = GLASS;
    double const roof = box_distance(spot, -0.18 * l, 0.26 * l, 0.60 * spot.half_wide);
    if (roof < 0.0) deck = shade(CREAM, 1.0 + 0.06 * (spot.y > 0.0 ? spot.light : -spot.light));
    if (roof > -0.8 && roof < 0.0) deck = shade(CREAM, 0.78);
    double const well = box_distance(spot, -0.70 * l, 0.18 * l, 0.66 * spot.half_wide);
    if (well < 0.0) deck = well > -1.0 ? shade(TEAK, 0.6) : planks(spot, shade(TEAK, 0.86));
    return deck;
}

// A mast with a furled sail on its boom.
Colour with_mast(Spot const& spot, Colour deck) {
    double const l = spot.half_long;
    double const well = box_distance(spot, -0.55 * l, 0.24 * l, 0.5 * spot.half_wide);
    if (well < 0.0) deck = well > -0.9 ? CREAM : shade(TEAK, 0.7);
    double const coach = box_distance(spot, 0.12 * l, 0.30 * l, 0.42 * spot.half_wide);
    if (coach < 0.0) deck = coach > -1.2 ? GLASS : shade(CREAM, 0.94);
    double const sail = box_distance(spot, -0.25 * l, 0.46 * l, 1.5);
    if (sail < 0.0) deck = shade(CREAM, spot.y * spot.light > 0.0 ? 1.04 : 0.82);
    if (std::hypot(spot.x - 0.22 * l, spot.y) < 1.3) deck = {0.3F, 0.3F, 0.33F};
    return deck;
}

// Rows of boxes before a white bridge with a funnel.
Colour with_cargo(SceneryItem const& item, Spot const& spot, Colour deck) {
    constexpr std::array<Colour, 5> PAINTS{{{0.72F, 0.25F, 0.18F},
                                            {0.16F, 0.36F, 0.56F},
                                            {0.24F, 0.48F, 0.34F},
                                            {0.82F, 0.58F, 0.18F},
                                            {0.62F, 0.64F, 0.66F}}};
    double const l = spot.half_long;
    double const hold = box_distance(spot, 0.16 * l, 0.52 * l, 0.72 * spot.half_wide);
    if (hold < 0.0) {
        double const column = whole(spot.x / 13.0);
        double const row = whole(spot.y / 6.0);
        bool const gap = on_lines(spot.x, 13.0, 1.0) || on_lines(spot.y, 6.0, 0.8);
        auto const pick = static_cast<std::size_t>(
            5.0 * whim(item, static_cast<std::uint32_t>(100.0 + 40.0 * column + row)));
        Colour const paint = PAINTS[pick % PAINTS.size()];
        deck = gap ? shade(paint, 0.5) : shade(paint, on_lines(spot.x, 2.0, 0.8) ? 0.9 : 1.04);
    }
    double const bridge = box_distance(spot, -0.62 * l, 0.14 * l, 0.84 * spot.half_wide);
    if (bridge < 0.0) deck = bridge > -1.4 ? GLASS : CREAM;
    if (std::hypot(spot.x + 0.66 * l, spot.y) < 0.2 * spot.half_wide + 1.0) {
        deck = {0.16F, 0.16F, 0.18F};
    }
    return deck;
}

} // namespace

double hull_distance(Spot const& spot) {
    double const t = std::clamp(spot.x / spot.half_long, -1.0, 1.0);
    double const bow = t > 0.0 ? 1.0 - t * t * t : 1.0 - 0.22 * t * t;
    return std::max(std::fabs(spot.y) - spot.half_wide * bow, std::fabs(spot.x) - spot.half_long);
}

Dab boat(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    constexpr std::array<Colour, 4> PAINTS{{{0.70F, 0.20F, 0.17F},
                                            {0.13F, 0.28F, 0.46F},
                                            {0.93F, 0.93F, 0.91F},
                                            {0.12F, 0.38F, 0.36F}}};
    double const hull = hull_distance(spot);
    if (hull > 0.3) { // the water that it stirs
        double const lace = 0.5 + clouds().at(item.at + Point{spot.x, spot.y}, 7.0);
        return {WHITE, 0.45 * std::min(1.0, lace) * smoothstep(2.6, 0.4, hull)};
    }
    bool const cargo = spot.half_long > 46.0;
    bool const sails = !cargo && whim(item, 3) < 0.45;
    Colour const paint = PAINTS[static_cast<std::size_t>(4.0 * whim(item, 0)) % PAINTS.size()];
    Colour colour =
        cargo ? shade(mix(theme.roof, {0.4F, 0.4F, 0.42F}, 0.5), 0.9) : planks(spot, TEAK);
    if (hull > -2.6) colour = cargo ? Colour{0.55F, 0.56F, 0.58F} : CREAM;
    if (hull > -1.2) colour = shade(paint, 0.9);
    if (cargo) {
        colour = with_cargo(item, spot, colour);
    } else {
        colour = sails ? with_mast(spot, colour) : with_cabin(spot, colour);
    }
    bool const lit = theme.dark > 0.0 && cargo &&
                     box_distance(spot, -0.62 * spot.half_long, 0.14 * spot.half_long,
                                  0.84 * spot.half_wide) > -1.4 &&
                     spot.x < -0.44 * spot.half_long && spot.x > -0.5 * spot.half_long;
    return {lit ? theme.lamp : colour, coverage(hull), lit};
}

Dab pier(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    double const tone = 0.12 * (whim(item, static_cast<std::uint32_t>(200.0 + spot.x / 2.6)) - 0.5);
    Colour colour =
        shade(mix(TEAK, theme.stone, 0.45), on_lines(spot.x, 2.6, 0.5) ? 0.7 : 0.98 + tone);
    bool const beam = spot.outside > -1.3;
    if (beam) colour = shade(colour, 0.74);
    bool const post = beam && on_lines(spot.x, 18.0, 2.6);
    return {post ? Colour{0.26F, 0.22F, 0.18F} : colour, coverage(spot.outside)};
}
