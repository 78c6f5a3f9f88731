#include "track_compiler/lane_field.h"

#include "track_compiler/way.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr double LANE_MARGIN = 6.0; // cells beside a lane in which it is known

struct Leg {
    Point from;
    Point to;
    double along = 0.0; // of its beginning
    double whole = 0.0; // the lane's length
};

void measure_leg(Leg const& leg, double reach, std::uint16_t number, LaneField& field) {
    auto const low = [&](double a, double b) {
        return std::max(0, static_cast<int>(std::min(a, b) - reach));
    };
    auto const high = [&](double a, double b, int limit) {
        return std::min(limit, static_cast<int>(std::max(a, b) + reach) + 1);
    };
    Point const way = leg.to - leg.from;
    double const square = std::max(dot(way, way), 1e-9);
    for (int y = low(leg.from.y, leg.to.y); y < high(leg.from.y, leg.to.y, field.height); ++y) {
        for (int x = low(leg.from.x, leg.to.x); x < high(leg.from.x, leg.to.x, field.width); ++x) {
            Point const offset = Point{x + 0.5, y + 0.5} - leg.from;
            double const t = std::clamp(dot(offset, way) / square, 0.0, 1.0);
            auto const off = static_cast<float>(length(offset - t * way));
            LaneSpot& spot =
                field.spots[static_cast<std::size_t>(y) * static_cast<std::size_t>(field.width) +
                            static_cast<std::size_t>(x)];
            if (static_cast<double>(off) > reach || (spot.lane != 0 && spot.off <= off)) continue;
            double const along = leg.along + t * std::sqrt(square);
            spot = {number, off, static_cast<float>(along),
                    static_cast<float>(std::min(along, leg.whole - along))};
        }
    }
}

} // namespace

LaneField measure_lanes(Course const& course, int width, int height) {
    LaneField field{.width = width, .height = height};
    if (course.lanes.empty()) return field;
    field.spots.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    std::uint16_t number = 1;
    for (Lane const& lane : course.lanes) {
        std::vector<Point> const way = smoothed_way(lane.way);
        double whole = 0.0;
        for (std::size_t i = 0; i + 1 < way.size(); ++i) whole += distance(way[i], way[i + 1]);
        double along = 0.0;
        for (std::size_t i = 0; i + 1 < way.size(); ++i) {
            measure_leg({way[i], way[i + 1], along, whole}, lane.width / 2.0 + LANE_MARGIN, number,
                        field);
            along += distance(way[i], way[i + 1]);
        }
        ++number;
    }
    return field;
}

LaneSpot lane_at(LaneField const& field, Point place) {
    if (field.spots.empty()) return {};
    double const x = std::clamp(place.x - 0.5, 0.0, field.width - 1.001);
    double const y = std::clamp(place.y - 0.5, 0.0, field.height - 1.001);
    auto const row = static_cast<std::size_t>(field.width);
    std::size_t const at = static_cast<std::size_t>(y) * row + static_cast<std::size_t>(x);
    LaneSpot const* const spots = field.spots.data() + at;
    LaneSpot found = spots[0];
    bool const whole = found.lane != 0 && spots[1].lane == found.lane &&
                       spots[row].lane == found.lane && spots[row + 1].lane == found.lane;
    if (!whole) return {};
    auto const tx = static_cast<float>(x - std::floor(x));
    auto const ty = static_cast<float>(y - std::floor(y));
    auto const blend = [&](float LaneSpot::*value) {
        return std::lerp(std::lerp(spots[0].*value, spots[1].*value, tx),
                         std::lerp(spots[row].*value, spots[row + 1].*value, tx), ty);
    };
    found.off = blend(&LaneSpot::off);
    found.along = blend(&LaneSpot::along);
    found.end = blend(&LaneSpot::end);
    return found;
}
