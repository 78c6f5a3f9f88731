#include "track_compiler/racing_line.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::size_t STRIDE = 6;  // samples between the nodes that are relaxed
constexpr double EDGE_ROOM = 12.0; // cells that the line keeps from the road's edge
constexpr int ROUNDS = 600;

} // namespace

// A closed chain of nodes, each free to slide across the road, pulled tight: every node moves
// towards the middle of its neighbours, as far as the road lets it.
std::vector<double> racing_offsets(Centreline const& line) {
    std::size_t const count = std::max<std::size_t>(3, line.samples.size() / STRIDE);
    std::vector<double> offsets(count, 0.0);
    auto const sample = [&](std::size_t node) -> RoadSample const& {
        return line.samples[node * line.samples.size() / count];
    };
    auto const place = [&](std::size_t node) {
        return sample(node).at + offsets[node] * side_of(direction(sample(node).heading));
    };
    for (int round = 0; round < ROUNDS; ++round) {
        for (std::size_t node = 0; node < count; ++node) {
            Point const middle =
                0.5 * (place((node + count - 1) % count) + place((node + 1) % count));
            RoadSample const& here = sample(node);
            double const wish = dot(middle - here.at, side_of(direction(here.heading)));
            double const room = std::max(0.0, here.half_width - EDGE_ROOM);
            offsets[node] = std::clamp(wish, -room, room);
        }
    }
    std::vector<double> fine(line.samples.size());
    for (std::size_t i = 0; i < fine.size(); ++i) {
        double const at = static_cast<double>(i * count) / static_cast<double>(fine.size());
        auto const node = static_cast<std::size_t>(at);
        double const t = at - static_cast<double>(node);
        fine[i] = offsets[node] * (1.0 - t) + offsets[(node + 1) % count] * t;
    }
    return fine;
}
