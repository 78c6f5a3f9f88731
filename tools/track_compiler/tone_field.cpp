#include "track_compiler/tone_field.h"

#include "track_compiler/grain.h"
#include "track_compiler/scenery.h"

#include <cstddef>

namespace {

constexpr double STEP = 4.0; // cells from one node of the lattice to the next

Tones tones_of(Point at) {
    auto const bend = [](Point place) {
        return static_cast<float>(56.0 * (clouds().at(place, 190.0) - 0.5) +
                                  16.0 * (clouds().at(place, 60.0) - 0.5));
    };
    return {.light = static_cast<float>(wide_clouds(at, 170.0)),
            .grove = static_cast<float>(grove(at)),
            .dense = static_cast<float>(wide_clouds({at.y, at.x}, 70.0)),
            .drift = static_cast<float>(smoothstep(0.52, 0.74, wide_clouds({at.y, -at.x}, 120.0))),
            .bend_x = bend(at),
            .bend_y = bend({at.y, at.x})};
}

Tones between(Tones const& a, Tones const& b, float t) {
    auto const part = [t](float from, float to) { return from + (to - from) * t; };
    return {part(a.light, b.light), part(a.grove, b.grove),   part(a.dense, b.dense),
            part(a.drift, b.drift), part(a.bend_x, b.bend_x), part(a.bend_y, b.bend_y)};
}

} // namespace

ToneField measure_tones(int width, int height) {
    auto const nodes = [](int side) { return static_cast<int>(side / STEP) + 2; };
    ToneField field{.width = nodes(width), .height = nodes(height)};
    field.tones.reserve(static_cast<std::size_t>(field.width) *
                        static_cast<std::size_t>(field.height));
    for (int y = 0; y < field.height; ++y) {
        for (int x = 0; x < field.width; ++x) {
            field.tones.push_back(tones_of(STEP * Point{x * 1.0, y * 1.0}));
        }
    }
    return field;
}

Tones tones_at(ToneField const& field, Point place) {
    double const x = std::clamp(place.x / STEP, 0.0, field.width - 1.001);
    double const y = std::clamp(place.y / STEP, 0.0, field.height - 1.001);
    auto const column = static_cast<std::size_t>(x);
    auto const row = static_cast<std::size_t>(y);
    auto const wide = static_cast<std::size_t>(field.width);
    Tones const* const node = field.tones.data() + row * wide + column;
    auto const tx = static_cast<float>(x - static_cast<double>(column));
    auto const ty = static_cast<float>(y - static_cast<double>(row));
    return between(between(node[0], node[1], tx), between(node[wide], node[wide + 1], tx), ty);
}
