#include "support/tracks.h"
#include "world/surface.h"
#include "world/track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <numbers>
#include <random>
#include <utility>

namespace {

CarState at(double x, double y) {
    CarState car;
    car.x = x;
    car.y = y;
    return car;
}

// The fields' definitions, cell by cell, as slow as they are plain.
std::uint8_t plain_grass_distance(Track const& track, int column, int row) {
    if (cell_is_road(track.cells[track.index(column, row)])) return 0;
    int least = 26;
    for (int dy = -5; dy <= 5; ++dy) {
        for (int dx = -5; dx <= 5; ++dx) {
            if (!track.contains(column + dx, row + dy)) continue;
            if (!cell_is_road(track.cells[track.index(column + dx, row + dy)])) continue;
            least = std::min(least, dx * dx + dy * dy);
        }
    }
    return static_cast<std::uint8_t>(
        std::clamp(static_cast<int>(std::sqrt(least) + 0.5), 1, 5)); // NOLINT: the definition
}

std::vector<std::int32_t> plain_start_distance(Track const& track, std::int32_t& most) {
    std::vector<std::int32_t> steps(track.cells.size(), -1);
    std::deque<Cell> queue = {{track.start_x, track.start_y}};
    steps[track.index(track.start_x, track.start_y)] = 0;
    most = 0;
    for (; !queue.empty(); queue.pop_front()) {
        Cell const from = queue.front();
        for (int k = 0; k < 9; ++k) {
            Cell const to{from.column + k % 3 - 1, from.row + k / 3 - 1};
            if (!cell_is_passable(track, to.column, to.row)) continue;
            std::size_t const index = track.index(to.column, to.row);
            if (steps[index] != -1 || track.cells[index] == '!') continue;
            most = steps[index] = steps[track.index(from.column, from.row)] + 1;
            queue.push_back(to);
        }
    }
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (track.cells[i] == '!') steps[i] = most + 1;
    }
    return steps;
}

TEST(Track, BuiltInCourseIsTheKnownOne) {
    Track const track = make_default_track();
    auto const count = [&](char cell) {
        return std::count(track.cells.begin(), track.cells.end(), static_cast<std::uint8_t>(cell));
    };
    EXPECT_EQ(track.width, 120);
    EXPECT_EQ(track.height, 72);
    EXPECT_EQ(count('b'), 192);
    EXPECT_EQ(count('r'), 147);
    EXPECT_EQ(count('w'), 149);
    EXPECT_EQ(count('!'), 13);
    EXPECT_EQ(count('*'), 1);
    EXPECT_EQ(track.start_distance_max, 90);
    EXPECT_EQ(track.start_angle, std::numbers::pi);
    EXPECT_EQ(track.start_distance[track.index(40, 20)], 0);
    EXPECT_EQ(track.start_distance[track.index(52, 20)], 91);
}

TEST(Track, SurfaceFollowsTheCellUnderTheCar) {
    Track const track = track_from_rows({"*!.g", "rwbx"});
    auto const expect = [&](double x, double y, double resist, float rumble) {
        float heard = -1.0F;
        EXPECT_EQ(sample_surface(track, at(x, y), heard).resist, resist) << x << ", " << y;
        EXPECT_EQ(heard, rumble) << x << ", " << y;
    };
    expect(0.5, 0.5, 0.0, 0.0F);
    expect(1.0, 0.5, 0.0, 0.0F);
    expect(3.9, 0.9, 0.0, 1.0F);
    expect(0.5, 1.0, SIM_RW_RESIST, 0.6F);
    expect(1.5, 1.5, SIM_RW_RESIST, 0.6F);
    expect(2.5, 1.5, 0.0, 0.0F);
    expect(3.5, 1.5, 0.0, 0.0F);
    expect(-0.5, 0.5, 0.0, 0.0F); // still column 0
    expect(-1.0, 0.5, 0.0, 1.0F);
    expect(4.0, 0.5, 0.0, 1.0F);
    expect(0.5, 2.0, 0.0, 1.0F);
}

TEST(Track, KerbIsPassableFourCellsFromTheRoad) {
    Track const track = track_from_rows({"*!rrrrrr", "b!wwwwww"});
    EXPECT_TRUE(cell_is_passable(track, 5, 0));
    EXPECT_FALSE(cell_is_passable(track, 6, 0));
    EXPECT_FALSE(cell_is_passable(track, 0, 1));
    EXPECT_FALSE(cell_is_passable(track, -1, 0));
    EXPECT_FALSE(cell_is_passable(track, 0, 2));
    float rumble = 0.0F;
    EXPECT_EQ(sample_surface(track, at(7.5, 0.5), rumble).resist, SIM_RW_RESIST);
}

TEST(Track, FieldsMatchTheirDefinitionOnRandomGrids) {
    std::mt19937 random(7);
    std::string const kinds = "..*!rrwwggggggggggbx";
    for (auto const& [width, height] : {std::pair{1, 1}, {1, 40}, {40, 1}, {7, 5}, {33, 64}}) {
        Track track;
        track.width = width;
        track.height = height;
        for (int i = 0; i < width * height; ++i) {
            track.cells.push_back(static_cast<std::uint8_t>(kinds[random() % kinds.size()]));
        }
        track.start_x = width / 2;
        track.start_y = height / 2;
        track.compute_grass_distance();
        track.compute_start_distance();
        for (int row = 0; row < height; ++row) {
            for (int column = 0; column < width; ++column) {
                ASSERT_EQ(track.grass_distance[track.index(column, row)],
                          plain_grass_distance(track, column, row))
                    << column << ", " << row << " of " << width << " x " << height;
            }
        }
        std::int32_t most = 0;
        EXPECT_EQ(track.start_distance, plain_start_distance(track, most));
        EXPECT_EQ(track.start_distance_max, most);
    }
}

TEST(Track, FieldsOfOddGrids) {
    Track track;
    track.width = 3;
    track.height = 3;
    track.cells.assign(9, 'g');
    track.start_x = 3;
    track.compute_grass_distance();
    track.compute_start_distance();
    EXPECT_EQ(track.grass_distance, std::vector<std::uint8_t>(9, 5));
    EXPECT_EQ(track.start_distance, std::vector<std::int32_t>(9, -1));
    EXPECT_EQ(track.start_distance_max, 0);

    // The line closes the start off from what lies behind it.
    Track const closed = track_from_rows({"*.!..."});
    EXPECT_EQ(closed.start_distance, (std::vector<std::int32_t>{0, 1, 2, -1, -1, -1}));
}

} // namespace
