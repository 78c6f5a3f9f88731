// The fields derived from a track's cells.
//
// grass_distance is an exact Euclidean distance with a reach of 5 cells. It is separable: first
// the squared distance to the nearest road along each row, then, over the 11 rows around a cell,
// the least sum of that and the squared row offset. All passes run on bytes, row by row and without
// a branch, so that the compiler vectorises them; a grid of 6 million cells takes milliseconds.
//
// start_distance is a breadth-first flood. It keeps two frontiers instead of one long queue, and
// a map of open cells with a closed rim, so that neighbours need no bounds tests.

#include "world/track.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int REACH = GRASS_DISTANCE_MAX;
constexpr std::uint8_t NO_ROAD = 100; // a squared distance beyond reach; plus 25 it fits a byte

std::size_t cell_count(Track const& track) {
    return static_cast<std::size_t>(track.width) * static_cast<std::size_t>(track.height);
}

// Lowers `nearest` to what cells `offset` cells away offer along an axis: `squares` there.
void take(std::uint8_t* nearest, std::uint8_t const* squares, int count, int offset) {
    for (int x = 0; x < count; ++x) {
        nearest[x] = std::min(nearest[x], static_cast<std::uint8_t>(squares[x] + offset * offset));
    }
}

// The squared distance to the nearest road cell of the same row, NO_ROAD beyond the reach. `road`
// is room for a row with a margin of REACH at both ends, which holds NO_ROAD.
void scan_row(std::uint8_t const* cells, std::uint8_t* squares, int width, std::uint8_t* road) {
    std::uint8_t* const inner = road + REACH;
    for (int x = 0; x < width; ++x) inner[x] = cell_is_road(cells[x]) ? 0 : NO_ROAD;
    std::copy_n(inner, width, squares);
    for (int offset = 1; offset <= REACH; ++offset) {
        take(squares, inner - offset, width, offset);
        take(squares, inner + offset, width, offset);
    }
}

// From squared distance to distance, rounded to whole cells, 5 at most: a root is rounded to k or
// more from k * k - k + 1 on.
void round_roots(std::uint8_t* nearest, int width) {
    for (int x = 0; x < width; ++x) {
        std::uint8_t const square = nearest[x];
        int const distance =
            (square >= 1) + (square >= 3) + (square >= 7) + (square >= 13) + (square >= 21);
        nearest[x] = static_cast<std::uint8_t>(distance);
    }
}

// A cell of the flood, as its place in the grid and in the map of open cells.
struct Place {
    std::size_t cell;
    std::size_t open;
};

// A byte for each cell: 1 where the flood may still enter, with a rim of closed cells around the
// grid. The goal line is closed, so that the flood runs one way round the course only.
class OpenCells {
public:
    explicit OpenCells(Track const& track)
        : width_(static_cast<std::size_t>(track.width)), stride_(width_ + 2),
          open_(stride_ * (static_cast<std::size_t>(track.height) + 2), 0) {
        for (int row = 0; row < track.height; ++row) fill_row(track, row);
    }

    [[nodiscard]] Place place(int column, int row) const {
        auto const x = static_cast<std::size_t>(column);
        auto const y = static_cast<std::size_t>(row);
        return {y * width_ + x, (y + 1) * stride_ + x + 1};
    }

    // Adds those neighbours of `at` to `found` that may be entered, each cell once.
    void enter_neighbours(Place at, std::vector<Place>& found) {
        // One row up is width_ back in the grid, and stride_ back in the map.
        enter_three({at.cell - width_, at.open - stride_}, found);
        enter_three(at, found);
        enter_three({at.cell + width_, at.open + stride_}, found);
    }

    bool enter(Place at) { return std::exchange(open_[at.open], std::uint8_t{0}) != 0; }

private:
    void enter_three(Place middle, std::vector<Place>& found) {
        for (Place const at : {Place{middle.cell - 1, middle.open - 1}, middle,
                               Place{middle.cell + 1, middle.open + 1}}) {
            if (enter(at)) found.push_back(at);
        }
    }

    // Works with numbers, not with conditions, so that the compiler vectorises it.
    void fill_row(Track const& track, int row) {
        std::uint8_t const* cells = track.cells.data() + track.index(0, row);
        std::uint8_t const* distances = track.grass_distance.data() + track.index(0, row);
        std::uint8_t* open = open_.data() + place(0, row).open;
        for (int x = 0; x < track.width; ++x) {
            std::uint8_t const cell = cells[x];
            int const road = (cell == '.') | (cell == '*');
            int const kerb = ((cell == 'r') | (cell == 'w')) & (distances[x] <= KERB_REACH);
            open[x] = static_cast<std::uint8_t>(road | kerb);
        }
    }

    std::size_t width_;
    std::size_t stride_;
    std::vector<std::uint8_t> open_;
};

// Floods from the start cell; returns the largest step count.
std::int32_t flood(Track& track) {
    OpenCells open(track);
    std::vector<Place> frontier = {open.place(track.start_x, track.start_y)};
    std::vector<Place> next;
    open.enter(frontier.front());
    std::int32_t distance = 0;
    while (true) {
        for (Place const at : frontier) {
            track.start_distance[at.cell] = distance;
            open.enter_neighbours(at, next);
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
    std::vector<std::uint8_t> road(static_cast<std::size_t>(width) + std::size_t{2} * REACH,
                                   NO_ROAD);
    for (int row = 0; row < height; ++row) {
        scan_row(cells.data() + index(0, row), squares.data() + index(0, row), width, road.data());
    }
    grass_distance = squares;
    for (int row = 0; row < height; ++row) {
        std::uint8_t* nearest = grass_distance.data() + index(0, row);
        for (int dy = -std::min(row, REACH); dy <= std::min(height - 1 - row, REACH); ++dy) {
            take(nearest, squares.data() + index(0, row + dy), width, dy);
        }
        round_roots(nearest, width);
    }
}

void Track::compute_start_distance() {
    start_distance.assign(cell_count(*this), -1);
    start_distance_max = 0;
    if (!contains(start_x, start_y)) return;
    start_distance_max = flood(*this);
    for_each_cell(*this, '!', [this](int column, int row) {
        start_distance[index(column, row)] = start_distance_max + 1;
    });
}
