#include "track_compiler/night_painter.h"

#include "track_compiler/picture.h"
#include "track_compiler/thing_painter.h"
#include "track_compiler/things.h"

#include <vector>

namespace {

constexpr double NIGHT_LOSS = 0.66; // of the light, at the darkest
constexpr float MOST_LIGHT = 1.15F; // where the cones of several lamps meet

// How much lamps light every pixel of the picture.
struct LightMap {
    std::vector<float> light;
    int width = 0;
    int height = 0;
};

// A round pool of light on whatever lies there.
void shine(LightMap& map, Point at, double reach, double strength) {
    auto const pixel = [](double cells) { return static_cast<int>(cells * PICTURE_SCALE); };
    int const bottom = std::min(map.height, pixel(at.y + reach) + 1);
    int const right = std::min(map.width, pixel(at.x + reach) + 1);
    for (int y = std::max(0, pixel(at.y - reach)); y < bottom; ++y) {
        for (int x = std::max(0, pixel(at.x - reach)); x < right; ++x) {
            Point const offset = pixel_place(x, y) - at;
            double const t = dot(offset, offset) / (reach * reach);
            if (t >= 1.0) continue;
            map.light[static_cast<std::size_t>(y) * static_cast<std::size_t>(map.width) +
                      static_cast<std::size_t>(x)] +=
                static_cast<float>(strength * (1.0 - t) * (1.0 - t));
        }
    }
}

// Several lights in a row along both long sides.
void shine_along(LightMap& map, SceneryItem const& item, double reach, double strength) {
    constexpr double APART = 48.0; // cells
    bool const turned = item.width > item.length;
    Point const along = turned ? side_of(direction(item.angle)) : direction(item.angle);
    double const half_long = std::max(item.length, item.width) / 2.0;
    double const half_wide = std::min(item.length, item.width) / 2.0;
    int const count = std::max(1, static_cast<int>(2.0 * half_long / APART));
    for (int light = 0; light < 2 * count; ++light) {
        if (whim(item, 60U + static_cast<std::uint32_t>(light)) < 0.25) continue;
        int const pair = light / 2;
        double const x = half_long * ((pair + 0.5) * 2.0 / count - 1.0);
        double const y = light % 2 == 0 ? -half_wide : half_wide;
        shine(map, item.at + x * along + y * side_of(along), reach, strength);
    }
}

void shine_from(LightMap& map, SceneryItem const& item) {
    switch (item.kind) {
    case SceneryKind::lamp:
        shine(map, item.at, item.length < 8.0 ? 70.0 : 120.0, 0.85);
        break;
    case SceneryKind::lighthouse:
        shine(map, item.at, 260.0, 0.9);
        break;
    case SceneryKind::house:
        shine_along(map, item, 40.0, 0.5);
        break;
    case SceneryKind::stand:
        shine_along(map, item, 70.0, 0.55);
        break;
    case SceneryKind::tent:
        shine(map, item.at, 40.0, 0.6);
        break;
    case SceneryKind::boat:
        shine(map, item.at, 0.6 * std::max(item.length, item.width), 0.4);
        break;
    case SceneryKind::crane:
        shine(map, item.at, 90.0, 0.6);
        break;
    default:
        break;
    }
}

} // namespace

void paint_night(PaintSource const& source, Picture const& picture) {
    Theme const& theme = source.theme;
    if (theme.dark <= 0.0) return;
    LightMap map{std::vector<float>(picture.pixels.size(), 0.0F), picture.width, picture.height};
    for (SceneryItem const& item : source.items) shine_from(map, item);
    auto const kept = static_cast<float>(1.0 - NIGHT_LOSS * theme.dark);
    Colour const moon{kept * 0.86F, kept * 0.96F, kept * 1.2F};
    for (std::size_t at = 0; at < map.light.size(); ++at) {
        Colour const day = unpack(picture.pixels[at]);
        float const light = std::min(MOST_LIGHT, map.light[at]);
        picture.pixels[at] =
            pack({day.r * (moon.r + light * theme.lamp.r), day.g * (moon.g + light * theme.lamp.g),
                  day.b * (moon.b + light * theme.lamp.b)});
    }
    paint_glowing_things(source, picture);
}
