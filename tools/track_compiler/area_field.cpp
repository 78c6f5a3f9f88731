#include "track_compiler/area_field.h"

#include "track_compiler/scenery.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr double MARGIN = 28.0; // cells around a patch in which its outline is known

double outline_distance(GroundArea const& area, Point at) {
    double nearest = 1e18;
    for (std::size_t i = 0, j = area.corners.size() - 1; i < area.corners.size(); j = i++) {
        Point const leg = area.corners[i] - area.corners[j];
        Point const offset = at - area.corners[j];
        double const t = std::clamp(dot(offset, leg) / std::max(dot(leg, leg), 1e-9), 0.0, 1.0);
        Point const gap = offset - t * leg;
        nearest = std::min(nearest, dot(gap, gap));
    }
    return std::sqrt(nearest);
}

// Later patches lie on top of earlier ones; next to a patch, the nearest counts.
void measure_area(GroundArea const& area, std::uint16_t number, AreaField& field) {
    auto const [left, right] = std::minmax_element(area.corners.begin(), area.corners.end(),
                                                   [](Point a, Point b) { return a.x < b.x; });
    auto const [top, bottom] = std::minmax_element(area.corners.begin(), area.corners.end(),
                                                   [](Point a, Point b) { return a.y < b.y; });
    auto const steps = [](double cells) { return static_cast<int>(cells / AREA_STEP); };
    int const x0 = std::max(0, steps(left->x - MARGIN));
    int const y0 = std::max(0, steps(top->y - MARGIN));
    int const x1 = std::min(field.width, steps(right->x + MARGIN));
    int const y1 = std::min(field.height, steps(bottom->y + MARGIN));
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x) {
            Point const cell{(x + 0.5) * AREA_STEP, (y + 0.5) * AREA_STEP};
            double const gap = outline_distance(area, cell);
            auto const depth = static_cast<float>(inside(area, cell) ? gap : -gap);
            std::size_t const at =
                static_cast<std::size_t>(y) * static_cast<std::size_t>(field.width) +
                static_cast<std::size_t>(x);
            if (depth <= 0.0F && depth <= field.depth[at]) continue;
            field.area[at] = number;
            field.depth[at] = depth;
        }
    }
}

} // namespace

AreaField measure_areas(Course const& course, int width, int height) {
    auto const steps = [](int side) { return static_cast<int>(std::ceil(side / AREA_STEP)) + 1; };
    AreaField field{.width = steps(width), .height = steps(height)};
    std::size_t const cells =
        static_cast<std::size_t>(field.width) * static_cast<std::size_t>(field.height);
    field.area.assign(cells, 0);
    field.depth.assign(cells, static_cast<float>(-MARGIN));
    std::uint16_t number = 1;
    for (GroundArea const& area : course.areas) measure_area(area, number++, field);
    return field;
}

AreaPlace area_at(AreaField const& field, Course const& course, Point place) {
    double const x = std::clamp(place.x / AREA_STEP - 0.5, 0.0, field.width - 1.001);
    double const y = std::clamp(place.y / AREA_STEP - 0.5, 0.0, field.height - 1.001);
    auto const x0 = static_cast<std::size_t>(x);
    auto const y0 = static_cast<std::size_t>(y);
    auto const row = static_cast<std::size_t>(field.width);
    std::size_t const at = y0 * row + x0;
    std::uint16_t const number = field.area[at];
    if (number == 0) return {nullptr, -MARGIN};
    auto const tx = static_cast<float>(x - static_cast<double>(x0));
    auto const ty = static_cast<float>(y - static_cast<double>(y0));
    float const top = std::lerp(field.depth[at], field.depth[at + 1], tx);
    float const bottom = std::lerp(field.depth[at + row], field.depth[at + row + 1], tx);
    return {&course.areas[number - 1U], static_cast<double>(std::lerp(top, bottom, ty))};
}
