// The fields derived from a track's cells.
//
// grass_distance is an exact Euclidean distance with a reach of 5 cells. It is separable: first
// the squared distance to the nearest road along each row, then, over the 11 rows around a cell,
// the least sum of that and the squared row offset. Both passes run on bytes, row by row, so that
// the compiler vectorises them; a grid of 6 million cells takes milliseconds.
//
// start_distance is a breadth-first flood. It keeps two frontiers instead of one long queue, and
// a map of open cells with a closed rim, so that neighbours need no bounds tests.

#include "world/track.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr int REACH = GRASS_DISTANCE_MAX;
constexpr std::uint8_t NO_ROAD = 100; // a squared distance beyond reach; plus 25 it fits a byte

std::size_t cell_count(Track const& track) {
    return static_cast<std::size_t>(track.width) * static_cast<std::size_t>(track.height);
}

// The squared distance to the nearest road cell of the same row, NO_ROAD beyond the reach.
void scan_row(std::uint8_t const* cells, std::uint8_t* squares, int width) {
    int gap = REACH + 1;
    for (int x = 0; x < width; ++x) {
        gap = cell_is_road(cells[x]) ? 0 : std::min(gap + 1, REACH + 1);
        squares[x] = static_cast<std::uint8_t>(gap);
    }
    gap = REACH + 1;
    for (int x = width - 1; x >= 0; --x) {
        gap = std::min<int>(squares[x], gap + 1);
        squares[x] = gap > REACH ? NO_ROAD : static_cast<std::uint8_t>(gap * gap);
    }
}

// Lowers `nearest` to what a row `dy` rows away offers.
void take_row(std::uint8_t* nearest, std::uint8_t const* squares, int width, int dy) {
    for (int x = 0; x < width; ++x) {
        nearest[x] = std::min(nearest[x], static_cast<std::uint8_t>(squares[x] + dy * dy));
    }
}

// Distance for a squared distance: rounded to whole cells, 1 at least off the road, 5 at most.
std::array<std::uint8_t, NO_ROAD + 1> rounded_roots() {
    std::array<std::uint8_t, NO_ROAD + 1> roots{};
    roots.fill(GRASS_DISTANCE_MAX);
    for (int square = 0; square <= REACH * REACH; ++square) {
        roots[static_cast<std::size_t>(square)] =
            static_cast<std::uint8_t>(std::lround(std::sqrt(square)));
    }
    return roots;
}

// A byte for each cell: 1 where the flood may still enter, with a rim of closed cells around the
// grid. The goal line is closed, so that the flood runs one way round the course only.
class OpenCells {
public:
    explicit OpenCells(Track const& track)
        : stride_(static_cast<std::size_t>(track.width) + 2),
          open_(stride_ * (static_cast<std::size_t>(track.height) + 2), 0) {
        for (int row = 0; row < track.height; ++row) fill_row(track, row);
    }

    // True once for each cell that may be entered.
    bool enter(Cell cell) { return std::exchange(open_[index(cell)], std::uint8_t{0}) != 0; }

private:
    // Columns and rows from -1, which is the rim.
    [[nodiscard]] std::size_t index(Cell cell) const {
        return static_cast<std::size_t>(cell.row + 1) * stride_ +
               static_cast<std::size_t>(cell.column + 1);
    }

    void fill_row(Track const& track, int row) {
        std::uint8_t const* cells = track.cells.data() + track.index(0, row);
        std::uint8_t const* distances = track.grass_distance.data() + track.index(0, row);
        std::uint8_t* open = open_.data() + index({0, row});
        for (int x = 0; x < track.width; ++x) {
            bool const kerb = cell_is_kerb(cells[x]) && distances[x] <= KERB_REACH;
            open[x] = (cell_is_road(cells[x]) && cells[x] != '!') || kerb ? 1 : 0;
        }
    }

    std::size_t stride_;
    std::vector<std::uint8_t> open_;
};

constexpr std::array<Cell, 8> NEIGHBOURS = {
    {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}}};

// Floods from the start cell; returns the largest step count.
std::int32_t flood(Track& track) {
    OpenCells open(track);
    std::vector<Cell> frontier = {{track.start_x, track.start_y}};
    std::vector<Cell> next;
    open.enter(frontier.front());
    std::int32_t distance = 0;
    while (true) {
        for (Cell const cell : frontier) {
            track.start_distance[track.index(cell.column, cell.row)] = distance;
            for (Cell const step : NEIGHBOURS) {
                Cell const neighbour{cell.column + step.column, cell.row + step.row};
                if (open.enter(neighbour)) next.push_back(neighbour);
            }
        }
        if (next.empty()) return distance;
        frontier.swap(next);
        next.clear();
        ++distance;
    }
}

} // namespace

void Track::compute_grass_distance() {
    std::vector<std::uint8_t> squares(cell_count(*this));
    grass_distance.assign(cell_count(*this), NO_ROAD);
    for (int row = 0; row < height; ++row) {
        scan_row(cells.data() + index(0, row), squares.data() + index(0, row), width);
    }
    auto const roots = rounded_roots();
    for (int row = 0; row < height; ++row) {
        std::uint8_t* nearest = grass_distance.data() + index(0, row);
        for (int dy = -std::min(row, REACH); dy <= std::min(height - 1 - row, REACH); ++dy) {
            take_row(nearest, squares.data() + index(0, row + dy), width, dy);
        }
        for (int x = 0; x < width; ++x) nearest[x] = roots[std::min(nearest[x], NO_ROAD)];
    }
}

void Track::compute_start_distance() {
    start_distance.assign(cell_count(*this), -1);
    start_distance_max = 0;
    if (!contains(start_x, start_y)) return;
    start_distance_max = flood(*this);
    for (std::size_t at = 0; at < cells.size(); ++at) {
        if (cells[at] == '!') start_distance[at] = start_distance_max + 1;
    }
}
