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
            for (int print = 0; print <= PRINTS; print++) {
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

// Paints what the filter lets through of a thing.
template <typename Filter>
void paint_thing(PaintSource const& source, SceneryItem const& item, Picture const& picture,
                 Filter filter) {
    double const front = front_of(source, item);
    bool const natural = is_natural(item.kind);
    paint_box(picture, item.at, radius_of(item) + 1.0, [&](std::uint32_t& pixel, Point offset) {
        Dab const dab = natural ? natural_thing(source.theme, item, offset)
                                : built_thing(source.theme, item, offset, front);
        if (filter(dab)) blend(pixel, dab.colour, dab.alpha);
    });
}

constexpr double NIGHT_LOSS = 0.6; // of the light, at the darkest

// Warm light on whatever lies around a lamp.
void shine(Theme const& theme, Point at, double reach, double strength, Picture const& picture) {
    double const kept = 1.0 - NIGHT_LOSS * theme.dark;
    paint_box(picture, at, reach, [&](std::uint32_t& pixel, Point offset) {
        double const away = length(offset) / reach;
        if (away >= 1.0) return;
        double const light = std::floor(24.0 * strength * (1.0 - away) * (1.0 - away)) / 24.0;
        Colour const seen = unpack(pixel);
        auto const lift = static_cast<float>(1.0 / kept);
        Colour const lit{seen.r * theme.lamp.r * lift + 0.06F, seen.g * theme.lamp.g * lift + 0.05F,
                         seen.b * theme.lamp.b * lift + 0.02F};
        blend(pixel, lit, light);
    });
}

// Windows throw some light on the ground along a house's long sides.
void shine_from_house(Theme const& theme, SceneryItem const& item, Picture const& picture) {
    Point const along = direction(item.angle);
    for (int window = 0; window < 6; window++) {
        if (whim(item, 60U + static_cast<std::uint32_t>(window)) < 0.4) continue;
        double const x = item.length * (window % 3 - 1) * 0.32;
        double const y = (window < 3 ? -0.5 : 0.5) * item.width;
        shine(theme, item.at + x * along + y * side_of(along), 26.0, 1.0, picture);
    }
}

} // namespace

void paint_shadows(PaintSource const& source, Picture const& picture) {
    if (source.theme.shadow <= 0.0) return;
    std::vector<std::uint8_t> shadows(picture.pixels.size(), 0);
    for (SceneryItem const& item : source.items) {
        gather_shadow(source.theme, item, picture.width, picture.height, shadows);
    }
    for (std::size_t at = 0; at < shadows.size(); at++) {
        if (shadows[at] == 0) continue;
        Colour const lit = unpack(picture.pixels[at]);
        auto const dark = static_cast<float>(source.theme.shadow * shadows[at] / 248.0);
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

void paint_night(PaintSource const& source, Picture const& picture) {
    Theme const& theme = source.theme;
    if (theme.dark <= 0.0) return;
    auto const kept = static_cast<float>(1.0 - NIGHT_LOSS * theme.dark);
    for (std::uint32_t& pixel : picture.pixels) {
        Colour const day = unpack(pixel);
        pixel = pack({day.r * kept * 0.92F, day.g * kept * 0.97F, day.b * kept * 1.12F});
    }
    for (SceneryItem const& item : source.items) {
        if (item.kind == SceneryKind::lamp) shine(theme, item.at, 96.0, 1.0, picture);
        if (item.kind == SceneryKind::house) shine_from_house(theme, item, picture);
    }
    for (SceneryItem const& item : source.items) {
        paint_thing(source, item, picture, [](Dab const& dab) { return dab.glows; });
    }
}
