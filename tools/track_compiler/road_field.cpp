#include "track_compiler/road_field.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Brings one stretch of the line to bear on the cells around it: the nearest edge wins.
void measure_stretch(RoadSample const& from, RoadSample const& to, double stretch,
                     RoadField& field) {
    Point const leg = to.at - from.at;
    double const square = std::max(dot(leg, leg), 1e-12);
    Point const side = side_of(1.0 / std::sqrt(square) * leg);
    double const span = std::max(from.half_width, to.half_width) + static_cast<double>(field.reach);
    auto const low = [](double value) { return std::max(0, static_cast<int>(std::floor(value))); };
    int const x0 = low(std::min(from.at.x, to.at.x) - span);
    int const y0 = low(std::min(from.at.y, to.at.y) - span);
    int const x1 =
        std::min(field.width - 1, static_cast<int>(std::ceil(std::max(from.at.x, to.at.x) + span)));
    int const y1 = std::min(field.height - 1,
                            static_cast<int>(std::ceil(std::max(from.at.y, to.at.y) + span)));
    for (int y = y0; y <= y1; ++y) {
        for (int x = x0; x <= x1; ++x) {
            Point const offset = Point{x + 0.5, y + 0.5} - from.at;
            double const t = std::clamp(dot(offset, leg) / square, 0.0, 1.0);
            Point const gap = offset - t * leg;
            double const half = from.half_width + (to.half_width - from.half_width) * t;
            auto const edge = static_cast<float>(std::sqrt(dot(gap, gap)) - half);
            std::size_t const at = field.index(x, y);
            if (edge >= field.edge[at]) continue;
            field.edge[at] = edge;
            field.along[at] = static_cast<float>(from.along + stretch * t);
            field.lateral[at] = std::copysign(edge + static_cast<float>(half),
                                              static_cast<float>(dot(offset, side)));
        }
    }
}

} // namespace

RoadField measure_road(Centreline const& line, int width, int height, double reach) {
    RoadField field{.width = width, .height = height, .reach = static_cast<float>(reach)};
    std::size_t const cells = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    field.edge.assign(cells, field.reach);
    field.along.assign(cells, 0.0F);
    field.lateral.assign(cells, 0.0F);
    std::size_t const count = line.samples.size();
    double const stretch = line.length / static_cast<double>(count);
    for (std::size_t i = 0; i < count; ++i) {
        measure_stretch(line.samples[i], line.samples[(i + 1) % count], stretch, field);
    }
    return field;
}

void add_forks(Centreline const& line, RoadField& field) {
    for (std::vector<RoadSample> const& fork : line.forks) {
        for (std::size_t i = 0; i + 1 < fork.size(); ++i) {
            measure_stretch(fork[i], fork[i + 1], fork[i + 1].along - fork[i].along, field);
        }
    }
}

RoadPlace road_at(RoadField const& field, Point place) {
    double const x = std::clamp(place.x - 0.5, 0.0, field.width - 1.0);
    double const y = std::clamp(place.y - 0.5, 0.0, field.height - 1.0);
    int const x0 = std::min(static_cast<int>(x), field.width - 2);
    int const y0 = std::min(static_cast<int>(y), field.height - 2);
    auto const fx = static_cast<float>(x - x0);
    auto const fy = static_cast<float>(y - y0);
    std::size_t const at = field.index(x0, y0);
    auto const row = static_cast<std::size_t>(field.width);
    std::array<std::size_t, 4> const around{at, at + 1, at + row, at + row + 1};
    auto const blend = [&](std::vector<float> const& values) {
        float const top = values[around[0]] + (values[around[1]] - values[around[0]]) * fx;
        float const bottom = values[around[2]] + (values[around[3]] - values[around[2]]) * fx;
        return static_cast<double>(top + (bottom - top) * fy);
    };
    RoadPlace found{.edge = blend(field.edge)};
    // Where the line closes, or two stretches meet, along and lateral jump: take the nearest cell.
    std::size_t const nearest = around[(fx < 0.5F ? 0U : 1U) + (fy < 0.5F ? 0U : 2U)];
    bool const jumps = std::any_of(around.begin(), around.end(), [&](std::size_t cell) {
        return std::fabs(field.along[cell] - field.along[nearest]) > 6.0F;
    });
    found.along = jumps ? static_cast<double>(field.along[nearest]) : blend(field.along);
    found.lateral = jumps ? static_cast<double>(field.lateral[nearest]) : blend(field.lateral);
    return found;
}

double kerb_depth_at(Centreline const& line, double along, double lateral) {
    return line.kerb_at(along, lateral < 0.0);
}
