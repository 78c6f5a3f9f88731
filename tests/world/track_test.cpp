#include "support/tracks.h"
#include "world/surface.h"
#include "world/track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <tuple>
#include <utility>

namespace {

// The definition, cell by cell, as slow as it is plain.
int plain_grass_distance(Track const& track, int column, int row) {
    if (cell_is_road(track.cells[track.index(column, row)])) return 0;
    int least = 26;
    for (int i = 0; i < 11 * 11; ++i) {
        int const dx = i % 11 - 5;
        int const dy = i / 11 - 5;
        bool const road = track.contains(column + dx, row + dy) &&
                          cell_is_road(track.cells[track.index(column + dx, row + dy)]);
        if (road) least = std::min(least, dx * dx + dy * dy);
    }
    return std::clamp(static_cast<int>(std::sqrt(least) + 0.5), 1, 5); // NOLINT: the definition
}

TEST(Track, BuiltInCourseIsTheKnownOne) {
    Track const track = make_default_track();
    auto const count = [&](char cell) {
        return std::count(track.cells.begin(), track.cells.end(), static_cast<std::uint8_t>(cell));
    };
    EXPECT_EQ(track.width, 120);
    EXPECT_EQ(track.height, 72);
    for (auto const& [cell, many] :
         {std::pair{'b', 192}, {'r', 147}, {'w', 149}, {'!', 13}, {'*', 1}}) {
        EXPECT_EQ(count(cell), many) << cell;
    }
    EXPECT_EQ(track.start_distance_max, 90);
    EXPECT_EQ(track.start_angle, std::numbers::pi);
    EXPECT_EQ(track.start_distance[track.index(40, 20)], 0);
    EXPECT_EQ(track.start_distance[track.index(52, 20)], 91);
}

TEST(Track, SurfaceFollowsTheCellUnderTheCar) {
    Track const track = track_from_rows({"*!.g", "rwbx"});
    for (auto const& [x, y, resist, rumble] : {std::tuple{0.5, 0.5, 0.0, 0.0F},
                                               {3.9, 0.9, 0.0, 1.0F},
                                               {0.5, 1.0, 0.0012, 0.6F},
                                               {1.5, 1.5, 0.0012, 0.6F},
                                               {2.5, 1.5, 0.0, 0.0F},
                                               {3.5, 1.5, 0.0, 0.0F},
                                               {-0.5, 0.5, 0.0, 0.0F}, // still column 0
                                               {-1.0, 0.5, 0.0, 1.0F},
                                               {4.0, 0.5, 0.0, 1.0F},
                                               {0.5, 2.0, 0.0, 1.0F}}) {
        float heard = -1.0F;
        EXPECT_EQ(sample_surface(track, {.x = x, .y = y}, heard).resist, resist) << x;
        EXPECT_EQ(heard, rumble) << x << ", " << y;
    }
}

TEST(Track, KerbIsPassableFourCellsFromTheRoad) {
    Track const track = track_from_rows({"*!rrrrrr", "b!wwwwww"});
    EXPECT_TRUE(cell_is_passable(track, 5, 0));
    EXPECT_FALSE(cell_is_passable(track, 6, 0));
    for (Cell const wall : {Cell{0, 1}, {-1, 0}, {0, 2}}) {
        EXPECT_FALSE(cell_is_passable(track, wall.column, wall.row));
    }
    float rumble = 0.0F;
    EXPECT_EQ(sample_surface(track, {.x = 7.5, .y = 0.5}, rumble).resist, SIM_RW_RESIST);
}

TEST(Track, GrassDistanceIsAsDefinedOnRandomGrids) {
    std::mt19937 random(7);
    std::string const dense = "..*!rrwwggggggggggbx";
    std::string const sparse = dense + std::string(60, 'g');
    for (auto const& [width, height] : {std::pair{1, 1}, {1, 40}, {40, 1}, {7, 5}, {33, 64}}) {
        Track track;
        track.width = width;
        track.height = height;
        for (int i = 0; i < width * height; ++i) {
            std::string const& kinds = width > 30 ? sparse : dense;
            track.cells.push_back(static_cast<std::uint8_t>(kinds[random() % kinds.size()]));
        }
        track.compute_grass_distance();
        for (int i = 0; i < width * height; ++i) {
            ASSERT_EQ(track.grass_distance[static_cast<std::size_t>(i)],
                      plain_grass_distance(track, i % width, i / width))
                << i << " of " << width << " x " << height;
        }
    }
}

TEST(Track, StartDistanceCountsStepsOnTheRoadUpToTheLine) {
    Track const track = track_from_rows({"*.g.", "gg.g", "!..."});
    EXPECT_EQ(track.start_distance,
              (std::vector<std::int32_t>{0, 1, -1, 3, -1, -1, 2, -1, 4, 3, 3, 3}));
    EXPECT_EQ(track.start_distance_max, 3);
    // The line closes the start off from what lies behind it.
    Track const closed = track_from_rows({"*.!..."});
    EXPECT_EQ(closed.start_distance, (std::vector<std::int32_t>{0, 1, 2, -1, -1, -1}));

    Track nowhere;
    nowhere.width = nowhere.height = nowhere.start_x = 3; // off the grid
    nowhere.cells.assign(9, 'g');
    nowhere.compute_start_distance();
    EXPECT_EQ(nowhere.start_distance, std::vector<std::int32_t>(9, -1));
    EXPECT_EQ(nowhere.start_distance_max, 0);
}

} // namespace
