#pragma once

// A track: a grid of one-byte cells that says where a car may drive, and two fields derived from
// it. Everything that the simulation knows of the world is here; the track's picture is only a
// backdrop.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

struct Track {
    std::int32_t width = 0;                   // columns, at least 1 in a complete track
    std::int32_t height = 0;                  // rows, at least 1 in a complete track
    std::vector<std::uint8_t> cells;          // row by row: (x, y) at y * width + x
    std::vector<std::uint8_t> grass_distance; // 0 on road, else 1..5 to the nearest road cell
    std::vector<std::int32_t> start_distance; // steps from the start cell, -1 where none lead
    std::int32_t start_distance_max = 0;      // largest step count of the flood
    std::int32_t start_x = 0;
    std::int32_t start_y = 0;
    double start_angle = 0.0; // heading of the cars at the start, radians
    std::int32_t goal_x1 = 0; // the goal line's end cells; the line joins their centres
    std::int32_t goal_y1 = 0;
    std::int32_t goal_x2 = 0;
    std::int32_t goal_y2 = 0;

    [[nodiscard]] bool contains(int column, int row) const {
        return column >= 0 && row >= 0 && column < width && row < height;
    }
    [[nodiscard]] std::size_t index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(column);
    }

    // The derived fields (distance_fields.cpp). The first needs the grid alone, the second also
    // grass_distance and the start cell; both replace what the fields held.
    void compute_grass_distance();
    void compute_start_distance();
};

// Length in pixels of a cell's edge in the track's drawing; set at every track load, at least 1.
extern std::int32_t PIXELS_PER_CELL;

inline bool cell_is_road(std::uint8_t cell) {
    return cell == '.' || cell == '*' || cell == '!';
}

constexpr std::uint8_t GRASS_DISTANCE_MAX = 5; // cells; stands for all that is further away, too
constexpr std::uint8_t KERB_REACH = 4;         // cells from the road that kerb stays drivable

inline bool cell_is_kerb(std::uint8_t cell) {
    return cell == 'r' || cell == 'w';
}

// Road is passable, and kerb up to 4 cells from the road; all else is wall, also beyond the grid.
inline bool cell_is_passable(Track const& track, int column, int row) {
    if (!track.contains(column, row)) return false;
    std::size_t const at = track.index(column, row);
    std::uint8_t const cell = track.cells[at];
    if (cell_is_road(cell)) return true;
    return cell_is_kerb(cell) && track.grass_distance[at] <= KERB_REACH;
}

// Calls `visit(column, row)` for each cell that holds `wanted`, in reading order: quickly, if few
// do.
template <typename Visit>
void for_each_cell(Track const& track, std::uint8_t wanted, Visit&& visit) {
    for (int row = 0; row < track.height; ++row) {
        std::uint8_t const* const first = track.cells.data() + track.index(0, row);
        std::uint8_t const* const end = first + track.width;
        auto const find = [end, wanted](std::uint8_t const* from) {
            void const* at = std::memchr(from, wanted, static_cast<std::size_t>(end - from));
            return static_cast<std::uint8_t const*>(at);
        };
        for (auto const* at = find(first); at != nullptr; at = find(at + 1)) {
            visit(static_cast<int>(at - first), row);
        }
    }
}

// A place on the grid; any integers, also beyond it.
struct Cell {
    int column = 0;
    int row = 0;
};

// The cell of a position, cut towards zero: from -1 up to 0 still counts as column or row 0.
inline Cell cell_at(double x, double y) {
    return {static_cast<int>(x), static_cast<int>(y)};
}

// True if a car may stand at this position.
inline bool position_is_passable(Track const& track, double x, double y) {
    Cell const cell = cell_at(x, y);
    return cell_is_passable(track, cell.column, cell.row);
}

// Sets the goal line to the box of all '!' cells; false if there is none.
bool find_goal_line(Track& track);
// Sets the start angle: square to the goal line, towards the side of the start cell.
void head_from_goal(Track& track);

// The built-in stadium course, complete: what is raced when no track file loads.
Track make_default_track();
