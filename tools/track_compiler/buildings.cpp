// Houses, sheds, grandstands and tents.

#include "track_compiler/grain.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"
#include "track_compiler/things.h"

#include <array>

namespace {

// A place on a roof that slopes to both sides of its ridge; a broad hall has several side by side.
struct RoofSpot {
    double across = 0.0; // from the bay's ridge
    double bay = 0.0;    // the bay's width
    double facing = 0.0; // how far the slope faces the light, -1..1
    Point grain;         // where to look up textures
};

RoofSpot roof_spot(SceneryItem const& item, Spot const& spot) {
    double const wide = 2.0 * spot.half_wide;
    double const bays = std::max(1.0, std::round(wide / 56.0));
    RoofSpot roof{.bay = wide / bays, .grain = item.at + Point{spot.x, spot.y}};
    double const y = spot.y + spot.half_wide;
    roof.across = y - roof.bay * std::floor(y / roof.bay) - roof.bay / 2.0;
    roof.facing = roof.across > 0.0 ? spot.light : -spot.light;
    return roof;
}

Colour roof_colour(Theme const& theme, SceneryItem const& item, Spot const& spot,
                   RoofSpot const& roof) {
    Colour const slate = mix(theme.stone, {0.30F, 0.33F, 0.38F}, 0.6);
    double const choice = whim(item, 0);
    Colour const tile = choice < 0.25 ? mix(theme.roof, slate, 0.85)
                                      : mix(theme.roof, theme.wall, 0.45 * (choice - 0.25));
    double const course = on_lines(roof.across, 2.6, 0.8) ? -0.09 : 0.0;
    double const pan = on_lines(spot.x, 3.0, 0.7) ? -0.04 : 0.0;
    double const patch =
        0.16 * (clouds().at(roof.grain, 26.0) - 0.5) + 0.06 * grain(roof.grain, 2.4);
    Colour colour = shade(tile, 0.94 + 0.26 * roof.facing + course + pan + patch);
    double const snow = smoothstep(0.30, 0.42, clouds().at(roof.grain, 44.0));
    colour = mix(colour, shade(WHITE, 0.9 + 0.1 * roof.facing), theme.snow * snow);
    if (std::fabs(roof.across) < 0.9) colour = shade(mix(colour, WHITE, 0.35), 1.05);
    if (spot.outside > -1.3) colour = shade(colour, 0.58);
    return colour;
}

// Windows in the roof, some of them lit at night.
void add_windows(Theme const& theme, SceneryItem const& item, Spot const& spot,
                 RoofSpot const& roof, Dab& dab) {
    double const window_x = spot.x + 6.0 - 20.0 * whole((spot.x + 16.0) / 20.0);
    double const window_y = std::fabs(roof.across) - roof.bay / 4.0;
    bool const pane = std::fabs(window_x) < 3.0 && std::fabs(window_y) < 2.4;
    if (!pane || std::fabs(spot.x - window_x) > spot.half_long - 6.0) return;
    bool const frame = std::fabs(window_x) > 2.2 || std::fabs(window_y) > 1.6;
    auto const number = static_cast<std::uint32_t>(60.0 + 3.0 * whole((spot.x + 16.0) / 20.0) +
                                                   whole(spot.y / 14.0));
    bool const lit = theme.dark > 0.0 && whim(item, number) < 0.6;
    Colour const glass = lit ? mix(theme.lamp, WHITE, 0.2) : Colour{0.40F, 0.52F, 0.62F};
    dab.colour = frame ? shade(theme.wall, 0.8) : glass;
    dab.glows = lit && !frame;
}

void add_chimney(Theme const& theme, Spot const& spot, RoofSpot const& roof, Dab& dab) {
    double const chimney =
        std::max(std::fabs(spot.x - 0.6 * spot.half_long), std::fabs(roof.across - 4.0));
    if (chimney > 2.8) return;
    dab.colour = chimney < 1.5 ? Colour{0.16F, 0.14F, 0.14F} : shade(theme.stone, 0.95);
    dab.glows = false;
}

constexpr std::array<Colour, 8> SHIRTS{{{0.86F, 0.22F, 0.2F},
                                        {0.95F, 0.8F, 0.25F},
                                        {0.2F, 0.42F, 0.8F},
                                        {0.95F, 0.95F, 0.93F},
                                        {0.28F, 0.62F, 0.35F},
                                        {0.9F, 0.52F, 0.2F},
                                        {0.35F, 0.25F, 0.4F},
                                        {0.2F, 0.22F, 0.27F}}};

// Shoulders in a shirt and a head of hair, a little off the middle of the seat.
Colour spectator(Colour step, double seat, double row, Point in_seat) {
    auto const number = [](double v) { return static_cast<std::uint32_t>(v + 4096.0); };
    auto const draw = [&](std::uint32_t what) { return chance(number(row), number(seat), what); };
    if (draw(71) > 0.84) return step;
    Point const off = in_seat - Point{0.8 * (draw(72) - 0.5), 0.9 * (draw(73) - 0.5)};
    double const shoulders = std::hypot(off.x / 1.35, off.y / 0.95);
    if (shoulders > 1.0) return step;
    Colour const hair = mix({0.20F, 0.14F, 0.10F}, {0.86F, 0.66F, 0.46F}, draw(74));
    Colour const shirt = SHIRTS[static_cast<std::size_t>(8.0 * draw(75)) % SHIRTS.size()];
    return length(off) < 0.72 ? hair : shade(shirt, 1.05 - 0.2 * shoulders);
}

// Steps with a crowd, stairs between the blocks and a painted wall in front. `down` is 0 at the
// roof's edge and grows towards the road.
Colour terrace(Theme const& theme, double x, double down, double deep) {
    constexpr double ROW = 4.2;
    constexpr double SEAT = 3.0;
    if (down > deep - 3.0) { // panels that somebody pays for
        double const panel = whole(x / 26.0);
        Colour const paint = SHIRTS[static_cast<std::size_t>(panel + 64.0) * 5U % SHIRTS.size()];
        return on_lines(x, 26.0, 1.0) ? shade(theme.wall, 0.6) : mix(paint, WHITE, 0.15);
    }
    double const block = line_distance(x, 48.0);
    double const row = whole(down / ROW);
    double const in_row = down - ROW * row;
    Colour const step = shade(theme.wall, in_row < 1.0 ? 0.58 : 0.80);
    if (block < 3.0) return shade(theme.wall, line_distance(down, 2.1) < 0.5 ? 0.74 : 1.0);
    double const seat = whole(x / SEAT);
    Colour colour =
        spectator(step, seat, row, {x - SEAT * seat - SEAT / 2.0, in_row - ROW / 2.0 - 0.3});
    return down < 5.5 ? shade(colour, 0.58 + 0.06 * down) : colour; // the roof's shadow
}

Colour stand_roof(Theme const& theme, double x, double up, double deep) {
    bool const seam = on_lines(x, 11.0, 0.7);
    bool const truss = on_lines(x, 44.0, 2.4);
    Colour colour = shade(mix(theme.roof, theme.wall, 0.08), 0.86 + 0.26 * up / deep);
    colour = shade(colour, truss ? 1.14 : seam ? 0.84 : 1.0);
    colour = mix(colour, WHITE, 0.85 * theme.snow);
    return up < 1.8 ? mix(colour, WHITE, 0.7) : colour;
}

} // namespace

Dab house(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    RoofSpot const roof = roof_spot(item, spot);
    Dab dab{roof_colour(theme, item, spot, roof), coverage(spot.outside)};
    add_windows(theme, item, spot, roof, dab);
    add_chimney(theme, spot, roof, dab);
    return dab;
}

Dab shed(Theme const& theme, Spot const& spot) {
    constexpr Colour RUST{0.50F, 0.29F, 0.18F};
    double const facing = spot.y > 0.0 ? spot.light : -spot.light;
    double const rib = on_lines(spot.x, 3.0, 0.9) ? -0.05 : 0.05;
    Colour const metal = mix(theme.wall, theme.stone, 0.5);
    Colour colour = shade(metal, 0.88 + 0.2 * facing + rib);
    double const rust = clouds().at({spot.x, spot.y}, 40.0);
    colour = mix(colour, RUST, 0.6 * smoothstep(0.56, 0.7, rust));
    colour = mix(colour, WHITE, 0.8 * theme.snow);
    if (std::fabs(spot.y) < 0.7) colour = mix(colour, WHITE, 0.4);
    if (spot.outside > -1.0) colour = shade(colour, 0.6);
    return {colour, coverage(spot.outside)};
}

Dab stand(Theme const& theme, Spot const& spot, double front) {
    double const high = 2.0 * spot.half_wide;
    double const down = spot.y * front + 0.16 * high; // from the roof's edge towards the road
    Colour colour = down < 0.0 ? stand_roof(theme, spot.x, -down, 0.34 * high)
                               : terrace(theme, spot.x, down, 0.66 * high);
    if (spot.outside > -1.0) colour = shade(theme.wall, 0.72);
    return {colour, coverage(spot.outside)};
}

// Four sides of striped cloth around a peak, or a ridge if it is long.
Dab tent(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    double const ridge = std::max(0.0, spot.half_long - spot.half_wide);
    double const end = std::max(0.0, std::fabs(spot.x) - ridge);
    bool const gable = end > std::fabs(spot.y);
    double const facing = gable ? (spot.x > 0.0 ? 0.5 : -0.5) * spot.light
                                : (spot.y > 0.0 ? spot.light : -spot.light);
    Colour const paint = SHIRTS[static_cast<std::size_t>(6.0 * whim(item, 0)) % 6];
    double const stripe = gable ? spot.y : spot.x;
    bool const white = line_distance(stripe, 10.0) < 2.5;
    Colour colour = shade(white ? Colour{0.96F, 0.95F, 0.92F} : paint, 0.92 + 0.22 * facing);
    if (std::fabs(end - std::fabs(spot.y)) < 0.7) colour = shade(colour, 1.12);
    if (spot.outside > -1.2) colour = shade(colour, 0.78);
    return {mix(colour, theme.lamp, 0.2 * theme.dark), coverage(spot.outside)};
}
