#include "track_compiler/way.h"

#include <cstddef>
#include <utility>

std::vector<Point> smoothed_way(std::vector<Point> way) {
    for (int round = 0; round < 3; ++round) {
        std::vector<Point> next = {way.front()};
        for (std::size_t i = 0; i + 1 < way.size(); ++i) {
            next.push_back(way[i] + 0.25 * (way[i + 1] - way[i]));
            next.push_back(way[i] + 0.75 * (way[i + 1] - way[i]));
        }
        next.push_back(way.back());
        way = std::move(next);
    }
    return way;
}
