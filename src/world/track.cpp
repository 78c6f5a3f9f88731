#include "world/track.h"

#include "world/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>

std::int32_t PIXELS_PER_CELL = 18;

namespace {

constexpr int STADIUM_WIDTH = 120;
constexpr int STADIUM_HEIGHT = 72;
constexpr double STRAIGHT_HALF = 32.0; // cells: the bends are centred on the straights' ends
constexpr double ROAD_INNER = 9.0;     // cells from the spine that joins those centres
constexpr double ROAD_OUTER = 22.0;
constexpr double BARRIER_INNER = 7.8;
constexpr double KERB_OUTER = 23.2;

// Red and white stripes by the angle round the middle of the grid.
std::uint8_t kerb_stripe(Vec2 from_middle) {
    int const stripe = static_cast<int>((angle_of(from_middle) + std::numbers::pi) * 6.0);
    return stripe % 2 != 0 ? 'r' : 'w';
}

std::uint8_t stadium_cell(int column, int row) {
    Vec2 const p{column + 0.5 - STADIUM_WIDTH / 2.0, row + 0.5 - STADIUM_HEIGHT / 2.0};
    double const beyond = std::abs(p.x) - STRAIGHT_HALF;
    double const d = beyond <= 0.0 ? std::abs(p.y) : length({beyond, p.y});
    if (d < ROAD_INNER) return d > BARRIER_INNER ? 'b' : 'g';
    if (d <= ROAD_OUTER) return '.';
    return d < KERB_OUTER ? kerb_stripe(p) : 'g';
}

void mark_goal_and_start(Track& track) {
    track.goal_x1 = track.goal_x2 = 52;
    track.goal_y1 = 14;
    track.goal_y2 = 26;
    for (int row = track.goal_y1; row <= track.goal_y2; ++row) {
        std::uint8_t& cell = track.cells[track.index(track.goal_x1, row)];
        if (cell == '.') cell = '!';
    }
    track.start_x = 40;
    track.start_y = 20;
    track.start_angle = std::numbers::pi;
    track.cells[track.index(track.start_x, track.start_y)] = '*';
}

} // namespace

Track make_default_track() {
    Track track;
    track.width = STADIUM_WIDTH;
    track.height = STADIUM_HEIGHT;
    track.cells.reserve(std::size_t{STADIUM_WIDTH} * STADIUM_HEIGHT);
    for (int row = 0; row < track.height; ++row) {
        for (int column = 0; column < track.width; ++column) {
            track.cells.push_back(stadium_cell(column, row));
        }
    }
    mark_goal_and_start(track);
    track.compute_grass_distance();
    track.compute_start_distance();
    return track;
}

bool find_goal_line(Track& track) {
    track.goal_x1 = track.goal_y1 = std::numeric_limits<std::int32_t>::max();
    track.goal_x2 = track.goal_y2 = -1;
    for_each_cell(track, '!', [&track](int column, int row) {
        track.goal_x1 = std::min(track.goal_x1, column);
        track.goal_y1 = std::min(track.goal_y1, row);
        track.goal_x2 = std::max(track.goal_x2, column);
        track.goal_y2 = std::max(track.goal_y2, row);
    });
    return track.goal_x2 >= 0;
}

void head_from_goal(Track& track) {
    Vec2 const line{static_cast<double>(track.goal_x2 - track.goal_x1),
                    static_cast<double>(track.goal_y2 - track.goal_y1)};
    Vec2 const middle{(track.goal_x1 + track.goal_x2) * 0.5 + 0.5,
                      (track.goal_y1 + track.goal_y2) * 0.5 + 0.5};
    Vec2 const start{track.start_x + 0.5, track.start_y + 0.5};
    double const side = (start.x - middle.x) * -line.y + (start.y - middle.y) * line.x;
    track.start_angle = angle_of(side < 0.0 ? Vec2{line.y, -line.x} : Vec2{-line.y, line.x});
}
