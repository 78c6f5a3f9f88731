// Smaller things that people have put beside the road.

#include "track_compiler/grain.h"
#include "track_compiler/ground_painter.h"
#include "track_compiler/picture.h"
#include "track_compiler/stencil.h"
#include "track_compiler/things.h"

#include <array>

namespace {

constexpr Colour GLASS{0.14F, 0.18F, 0.24F};
constexpr Colour YELLOW{0.93F, 0.70F, 0.16F};
constexpr Colour STEEL{0.34F, 0.36F, 0.40F};

double box(double x, double y, double half_long, double half_wide) {
    return std::max(std::fabs(x) - half_long, std::fabs(y) - half_wide);
}

// Distance to a box with round corners.
double rounded(Spot const& spot, double corner) {
    double const x = std::fabs(spot.x) - spot.half_long + corner;
    double const y = std::fabs(spot.y) - spot.half_wide + corner;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - corner;
}

} // namespace

Dab parked_car(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    constexpr std::array<Colour, 7> PAINTS{{{0.78F, 0.78F, 0.80F},
                                            {0.28F, 0.30F, 0.34F},
                                            {0.46F, 0.16F, 0.16F},
                                            {0.22F, 0.34F, 0.28F},
                                            {0.86F, 0.83F, 0.74F},
                                            {0.36F, 0.44F, 0.54F},
                                            {0.60F, 0.50F, 0.34F}}};
    double const body = rounded(spot, 2.2);
    double const l = spot.half_long;
    double const w = spot.half_wide;
    Colour const paint = PAINTS[static_cast<std::size_t>(7.0 * whim(item, 0)) % PAINTS.size()];
    double const side = spot.y > 0.0 ? spot.light : -spot.light;
    Colour colour = shade(paint, body > -0.8 ? 0.72 : 0.96 + 0.1 * side);
    double const cabin = box(spot.x + 0.12 * l, spot.y, 0.52 * l, 0.80 * w);
    if (cabin < 0.0) colour = GLASS;
    double const roof = box(spot.x + 0.14 * l, spot.y, 0.30 * l, 0.70 * w);
    if (roof < 0.0) colour = mix(shade(paint, 1.08 + 0.1 * side), WHITE, 0.8 * theme.snow);
    return {colour, coverage(body)};
}

// A gantry across the quay: two legs on rails, a lattice beam and a cabin under it.
Dab crane(Theme const& theme, Spot const& spot) {
    double const w = spot.half_wide;
    double const beam = std::fabs(spot.y) - 0.24 * w;
    double const leg = box(std::fabs(spot.x) - 0.5 * spot.half_long, spot.y, 3.0, w);
    double const cabin = box(spot.x - 0.16 * spot.half_long, spot.y, 6.0, 0.42 * w);
    Colour const paint = mix(YELLOW, theme.roof, 0.25);
    bool const lamp =
        theme.dark > 0.0 && std::hypot(spot.half_long - std::fabs(spot.x) - 3.0, spot.y) < 1.6;
    if (lamp) return {{1.0F, 0.35F, 0.25F}, 1.0, true};
    if (cabin < 0.0) return {cabin > -1.2 ? GLASS : shade(paint, 1.1), coverage(spot.outside)};
    if (beam < 0.0) {
        double const zigzag = line_distance(spot.x, 12.0) * (0.48 * w / 6.0) - 0.24 * w;
        bool const strut = beam > -1.4 || std::fabs(zigzag - spot.y) < 0.9;
        return {shade(paint, strut ? 1.0 : 0.42), coverage(spot.outside)};
    }
    if (leg < 0.0) return {shade(paint, leg > -1.0 ? 0.6 : 0.84), coverage(leg)};
    return {};
}

// An excavator: tracks, a turned house and an arm with a bucket.
Dab digger(Theme const& theme, Spot const& spot) {
    double const l = spot.half_long;
    double const w = spot.half_wide;
    double const track = box(spot.x + 0.45 * l, std::fabs(spot.y) - 0.78 * w, 0.52 * l, 0.22 * w);
    double const cab = box(spot.x + 0.45 * l, spot.y, 0.46 * l, 0.62 * w);
    double const arm = box(spot.x - 0.35 * l, spot.y - 0.16 * w, 0.56 * l, 0.12 * w);
    double const bucket = box(spot.x - 0.90 * l, spot.y - 0.16 * w, 0.10 * l, 0.34 * w);
    Colour const paint = mix(YELLOW, theme.ground_light, 0.1);
    if (bucket < 0.5) return {bucket > -0.9 ? shade(STEEL, 0.7) : STEEL, coverage(bucket)};
    if (arm < 0.5) return {shade(paint, arm > -0.8 ? 0.7 : 1.02), coverage(arm)};
    if (cab < 0.0) {
        double const glass = box(spot.x + 0.22 * l, spot.y + 0.28 * w, 0.16 * l, 0.24 * w);
        double const vent = box(spot.x + 0.72 * l, spot.y, 0.10 * l, 0.40 * w);
        if (glass < 0.0) return {GLASS, 1.0};
        if (vent < 0.0) return {on_lines(spot.y, 2.0, 0.9) ? STEEL : shade(paint, 0.8), 1.0};
        return {shade(paint, cab > -1.0 ? 0.74 : 0.98), 1.0};
    }
    return {on_lines(spot.x, 2.4, 0.9) ? shade(STEEL, 0.55) : shade(STEEL, 0.85), coverage(track)};
}

// Trunks side by side, their ends cut in turn.
Dab logs(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    constexpr double TRUNK = 5.0; // cells across
    double const number = whole(spot.y / TRUNK);
    double const y = spot.y - TRUNK * number - TRUNK / 2.0;
    auto const draw = [&](std::uint32_t what) {
        return whim(item, static_cast<std::uint32_t>(number + 300.0) * 4U + what);
    };
    double const reach = spot.half_long * (0.86 + 0.14 * draw(0));
    double const trunk = box(spot.x, y, reach, TRUNK / 2.0);
    Colour const bark = mix({0.42F, 0.30F, 0.20F}, {0.56F, 0.42F, 0.28F}, draw(1));
    double const round = 1.0 - (y * y) / (TRUNK * TRUNK / 4.0);
    Colour colour = shade(bark, 0.55 + 0.5 * round + 0.12 * y * spot.light / TRUNK +
                                    0.10 * grain({2.0 * spot.x, 6.0 * spot.y}, 3.0));
    if (std::fabs(spot.x) > reach - 1.6) colour = shade({0.88F, 0.72F, 0.48F}, 0.6 + 0.45 * round);
    colour = mix(colour, WHITE, 0.75 * theme.snow * round);
    return {colour, coverage(std::max(trunk, spot.outside))};
}

// Panels on posts along the road, each in two colours.
Dab board(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    constexpr std::array<Colour, 5> PAINTS{{{0.82F, 0.16F, 0.16F},
                                            {0.98F, 0.80F, 0.12F},
                                            {0.10F, 0.34F, 0.70F},
                                            {0.08F, 0.48F, 0.34F},
                                            {0.94F, 0.94F, 0.92F}}};
    constexpr double PANEL = 30.0; // cells
    double const number = whole(spot.x / PANEL);
    double const x = spot.x - PANEL * (number + 0.5);
    auto const pick =
        static_cast<std::size_t>(5.0 * whim(item, static_cast<std::uint32_t>(number + 400.0)));
    Colour const ground = PAINTS[pick % PAINTS.size()];
    Colour const sign = PAINTS[(pick + 2) % PAINTS.size()];
    bool const letter = box(x, spot.y, 10.0, 0.34 * spot.half_wide) < 0.0 && !on_lines(x, 4.0, 1.0);
    Colour colour = letter ? sign : ground;
    if (std::fabs(x) > PANEL / 2.0 - 0.7 || spot.outside > -0.8) colour = shade(theme.wall, 0.6);
    return {colour, coverage(spot.outside)};
}

// Chequered cloth that waves in the wind, on a pole whose head shines.
Dab flag(Spot const& spot) {
    constexpr double SQUARE = 4.4; // cells
    double const from_pole = spot.x + spot.half_long;
    if (from_pole < 4.0) {
        double const head = std::hypot(from_pole - 2.0, spot.y) - 2.0;
        return {head > -0.8 ? shade(STEEL, 0.6) : Colour{0.95F, 0.82F, 0.40F}, coverage(head)};
    }
    double const swing = std::min(1.0, (from_pole - 4.0) / 10.0);
    double const wave = std::sin(from_pole / 3.6);
    double const y = spot.y - 1.6 * swing * wave;
    double const outside = std::max(std::fabs(y) - spot.half_wide + 2.0, spot.outside);
    bool const odd = (static_cast<int>(whole((from_pole - 4.0) / SQUARE)) +
                      static_cast<int>(whole(y / SQUARE))) %
                         2 !=
                     0;
    double const light = 0.92 + 0.10 * swing * std::cos(from_pole / 3.6);
    return {shade(odd ? Colour{0.10F, 0.10F, 0.12F} : WHITE, light), coverage(outside)};
}

// A cloth between two posts: the course's name between two chequered ends.
Dab banner(Theme const& theme, SceneryItem const& item, Spot const& spot) {
    constexpr double POST = 2.0;   // cells, half of a post's side
    constexpr double SQUARE = 4.5; // cells
    double const end = spot.half_long - std::fabs(spot.x);
    if (end < 2.0 * POST) return {shade(STEEL, end < 1.0 ? 0.7 : 1.2), coverage(spot.outside)};
    double const hem = spot.half_wide - std::fabs(spot.y);
    if (hem < 1.2) return {shade(theme.kerb_red, 0.95), coverage(spot.outside)};
    if (end < 2.0 * POST + 2.0 * SQUARE) {
        bool const odd = (static_cast<int>(whole((end - 2.0 * POST) / SQUARE)) +
                          static_cast<int>(whole(spot.y / SQUARE))) %
                             2 !=
                         0;
        return {odd ? WHITE : shade(WHITE, 0.1), 1.0};
    }
    Point const at{spot.x + spot.half_long - BANNER_END, spot.y + BANNER_LETTER / 2.0};
    double const outside = BANNER_LETTER * stencil_outside(item.text, (1.0 / BANNER_LETTER) * at);
    double const paint = coverage(outside);
    Colour const cloth = theme.paper > 0.0 ? theme.ink : Colour{0.10F, 0.11F, 0.14F};
    bool const glows = theme.dark > 0.0 && paint > 0.4;
    return {mix(cloth, WHITE, 0.96 * paint), 1.0, glows};
}

// A basin with rings of ripples around the jet.
Dab fountain(Theme const& theme, SceneryItem const& item, Point offset) {
    double const radius = item.length / 2.0;
    double const away = length(offset);
    double const light = dot(offset, towards_light(theme)) / radius;
    if (away > radius - 3.5) {
        bool const joint = on_lines(std::atan2(offset.y, offset.x), 0.52, 0.04);
        double const round = away > radius - 1.0 ? 0.78 : 1.02;
        return {shade(theme.wall, joint ? 0.75 : round + 0.1 * light), coverage(away - radius)};
    }
    double const ring = std::sin(away * 1.5 + 2.0 * clouds().at(offset, 20.0));
    Colour colour = shade(mix(theme.water_shallow, theme.water_deep, 0.4), 1.0 + 0.10 * ring);
    if (away > radius - 5.5) colour = shade(colour, 0.72);
    double const spray =
        smoothstep(0.42, 0.1, away / radius + 0.3 * (clouds().at(offset, 6.0) - 0.5));
    colour = mix(colour, WHITE, 0.85 * spray);
    return {away < 1.6 ? theme.stone : colour, 1.0};
}

// White walls with a gallery, a red lantern roof and glass around it.
Dab lighthouse(Theme const& theme, SceneryItem const& item, Point offset) {
    double const radius = item.length / 2.0;
    double const t = length(offset) / radius;
    double const light = dot(offset, towards_light(theme)) / radius;
    Colour colour = shade(theme.stone, 0.9 + 0.15 * light);
    if (t < 0.84) colour = shade({0.94F, 0.93F, 0.90F}, 0.92 + 0.16 * light);
    if (t < 0.70) colour = shade(theme.kerb_red, 0.92 + 0.2 * light);
    if (t < 0.56) colour = shade({0.94F, 0.93F, 0.90F}, 0.95 + 0.16 * light);
    if (t < 0.44) {
        colour = on_lines(std::atan2(offset.y, offset.x), 0.7854, 0.12) ? STEEL : theme.lamp;
    }
    if (t < 0.30) colour = shade(theme.kerb_red, 0.85 + 0.5 * light);
    return {colour, coverage(length(offset) - radius)};
}
