#include "track_compiler/thing_painter.h"

#include "track_compiler/ground_painter.h"
#include "track_compiler/things.h"

#include <vector>

namespace {

double radius_of(SceneryItem const& item) {
    if (is_round(item.kind)) return item.length / 2.0;
    return std::hypot(item.length, item.width) / 2.0;
}

// Cells that a thing rises above the ground, as far as its shadow shows it.
double height_of(SceneryItem const& item) {
    double const small = std::min(item.length, item.width);
    switch (item.kind) {
    case SceneryKind::rock:
        return 0.25 * small;
    case SceneryKind::bush:
    case SceneryKind::cactus:
        return 0.3 * small;
    case SceneryKind::pine:
        return 0.42 * small;
    case SceneryKind::tyres:
    case SceneryKind::hay:
    case SceneryKind::logs:
        return 5.0;
    case SceneryKind::boat:
    case SceneryKind::car:
    case SceneryKind::board:
    case SceneryKind::fountain:
        return 4.0;
    case SceneryKind::pier:
        return 3.0;
    case SceneryKind::digger:
        return 8.0;
    case SceneryKind::flag:
    case SceneryKind::banner:
        return 10.0;
    case SceneryKind::crane:
        return 26.0;
    case SceneryKind::lighthouse:
        return 2.2 * small;
    case SceneryKind::lamp:
        return 14.0;
    default:
        return std::min(18.0, 0.42 * small);
    }
}

// How far a place lies outside the thing's footprint; a plant's shadow is rounder than its crown.
double outside_of(Theme const& theme, SceneryItem const& item, Point offset) {
    if (item.kind == SceneryKind::lamp) return length(offset) - 1.2;
    if (item.kind == SceneryKind::palm) return length(offset) - 0.33 * item.length;
    if (is_round(item.kind)) return length(offset) - 0.44 * item.length;
    Spot const spot = spot_of(theme, item, offset);
    switch (item.kind) {
    case SceneryKind::boat:
        return hull_distance(spot);
    case SceneryKind::crane:
        return std::max(spot.outside, std::fabs(spot.y) - 0.24 * spot.half_wide);
    case SceneryKind::digger:
        return std::max(spot.outside, std::fabs(spot.y) - 0.7 * spot.half_wide);
    default:
        return spot.outside;
    }
}

// The darkest of the shadow's prints between the foot and the tip, with a soft outline. Where
// shadows of several things meet they do not add up, so they are gathered before they fall.
void gather_shadow(Theme const& theme, SceneryItem const& item, int width, int height,
                   std::vector<std::uint8_t>& shadows) {
    constexpr int PRINTS = 6;
    constexpr double SOFT = 1.6; // cells
    Point const fall = -theme.shadow_length * height_of(item) * towards_light(theme);
    double const reach = radius_of(item) + length(fall) / 2.0 + SOFT;
    Point const middle = item.at + 0.5 * fall;
    auto const pixel = [](double cells) { return static_cast<int>(cells * PICTURE_SCALE); };
    for (int y = std::max(0, pixel(middle.y - reach));
         y < std::min(height, pixel(middle.y + reach) + 1); y++) {
        for (int x = std::max(0, pixel(middle.x - reach));
             x < std::min(width, pixel(middle.x + reach) + 1); x++) {
            Point const offset = pixel_place(x, y) - item.at;
            double outside = 1e9;
            for (int print = 0; print <= PRINTS; ++print) {
                Point const from = offset - (1.0 * print / PRINTS) * fall;
                outside = std::min(outside, outside_of(theme, item, from));
            }
            auto const value = static_cast<std::uint8_t>(
                std::round(8.0 * smoothstep(SOFT, -SOFT, outside)) * 31.0);
            std::uint8_t& here =
                shadows[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                        static_cast<std::size_t>(x)];
            here = std::max(here, value);
        }
    }
}

// On which of its long sides a thing has the road, as built_thing wants to know it.
double front_of(PaintSource const& source, SceneryItem const& item) {
    bool const turned = item.width > item.length;
    Point const along = turned ? side_of(direction(item.angle)) : direction(item.angle);
    Point const side = (std::min(item.length, item.width) / 2.0 + 12.0) * side_of(along);
    double const right = road_at(source.field, item.at + side).edge;
    double const left = road_at(source.field, item.at - side).edge;
    return right <= left ? 1.0 : -1.0;
}

double brightness(Dab const& dab) {
    double const sum = static_cast<double>(dab.colour.r + dab.colour.g + dab.colour.b) / 3.0;
    return dab.alpha > 0.5 ? sum : 1.0;
}

// As a pupil draws it: lines of ink wherever the thing's brightness steps, and a thin wash.
template <typename Look>
Dab sketched(Theme const& theme, SceneryKind kind, Point offset, Look look) {
    constexpr double PEN = 0.6; // cells
    Dab const dab = look(offset);
    double const here = brightness(dab);
    double step = 0.0;
    for (Point const beside :
         {Point{PEN, 0.0}, Point{-PEN, 0.0}, Point{0.0, PEN}, Point{0.0, -PEN}}) {
        step = std::max(step, std::fabs(brightness(look(offset + beside)) - here));
    }
    bool const crowded = kind == SceneryKind::stand; // all lines: only the boldest are drawn
    double const ink = smoothstep(crowded ? 0.45 : 0.09, crowded ? 0.9 : 0.2, step);
    Colour const wash = mix(dab.colour, WHITE, 0.45);
    return {mix(wash, theme.ink, ink), std::max(dab.alpha, ink)};
}

// Paints what the filter lets through of a thing.
template <typename Filter>
void paint_thing(PaintSource const& source, SceneryItem const& item, Picture const& picture,
                 Filter filter) {
    Theme const& theme = source.theme;
    double const front = front_of(source, item);
    bool const natural = is_natural(item.kind);
    bool const printed = item.kind == SceneryKind::flag || item.kind == SceneryKind::banner;
    bool const drawn = theme.paper > 0.0 && !printed;
    auto const look = [&](Point offset) {
        return natural ? natural_thing(theme, item, offset)
                       : built_thing(theme, item, offset, front);
    };
    paint_box(picture, item.at, radius_of(item) + 1.0, [&](std::uint32_t& pixel, Point offset) {
        Dab const dab = drawn ? sketched(theme, item.kind, offset, look) : look(offset);
        if (filter(dab)) blend(pixel, dab.colour, dab.alpha);
    });
}

// On paper shadows are hatched.
double hatching(Theme const& theme, std::size_t at, int width) {
    if (theme.paper <= 0.0) return 1.0;
    auto const wide = static_cast<std::size_t>(width);
    return (at % wide + at / wide) % 8 < 3 ? 1.5 : 0.15;
}

} // namespace

void paint_shadows(PaintSource const& source, Picture const& picture) {
    if (source.theme.shadow <= 0.0) return;
    std::vector<std::uint8_t> shadows(picture.pixels.size(), 0);
    for (SceneryItem const& item : source.items) {
        gather_shadow(source.theme, item, picture.width, picture.height, shadows);
    }
    for (std::size_t at = 0; at < shadows.size(); ++at) {
        if (shadows[at] == 0) continue;
        Colour const lit = unpack(picture.pixels[at]);
        auto const dark = static_cast<float>(source.theme.shadow * shadows[at] / 248.0 *
                                             hatching(source.theme, at, picture.width));
        // Shadows are lit by the sky alone, so they lose less of their blue.
        picture.pixels[at] = pack(
            {lit.r * (1.0F - dark), lit.g * (1.0F - 0.94F * dark), lit.b * (1.0F - 0.8F * dark)});
    }
}

void paint_things(PaintSource const& source, Picture const& picture) {
    for (SceneryItem const& item : source.items) {
        paint_thing(source, item, picture, [](Dab const&) { return true; });
    }
}

void paint_glowing_things(PaintSource const& source, Picture const& picture) {
    for (SceneryItem const& item : source.items) {
        paint_thing(source, item, picture, [](Dab const& dab) { return dab.glows; });
    }
}
