#include "audio/audio.h"
#include "base/player.h"
#include "support/tracks.h"
#include "world/arcade_bump.h"
#include "world/wall_contact.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double HALF_PI = std::numbers::pi / 2.0;

CarState car_at(double x, double y, double speed = 0.0, double course = 0.0) {
    return {
        .x = x, .y = y, .speed = speed, .heading = course, .travel_dir = course, .throttle = speed};
}

struct Wall : testing::Test {
    // Lets the car cross the border of the hall in one tick and handles it.
    void hit(CarState const& before, double dx, double dy, int index = 0) {
        player.car = before;
        player.car.x += dx;
        player.car.y += dy;
        player.car.in_wall = true;
        ASSERT_TRUE(car_on_impassable(player.car, hall));
        handle_wall_hit_alt(player, hall, before, audio, index);
    }

    Track hall = make_hall(40, 40); // road from 10 to 50 on both axes
    Audio audio;
    Player player;
};

TEST_F(Wall, HeadOnBouncesBackAtHalfSpeedAndAPush) {
    hit(car_at(49.9, 30.5, 0.3, 0.0), 0.3, 0.0);
    EXPECT_NEAR(player.car.speed, 0.15 + 0.06, 1e-12);
    EXPECT_NEAR(std::abs(player.car.travel_dir), std::numbers::pi, 1e-12);
    EXPECT_EQ(player.car.x, 49.9);
    EXPECT_EQ(player.car.heading, 0.0);
    EXPECT_DOUBLE_EQ(player.car.throttle, 0.15);
    EXPECT_TRUE(player.car.skidding);
    EXPECT_FALSE(player.car.in_wall);
    EXPECT_EQ(audio.car_feed[0].wall_hit_count.count(), 1U);
    EXPECT_FLOAT_EQ(audio.car_feed[0].wall_hit_volume, 0.3F);
}

TEST_F(Wall, ShallowHitsMirrorAndWildOnesAreOnlyHalved) {
    hit(car_at(30.5, 10.02, 0.3, -0.1), 0.3, -0.03, 1);
    EXPECT_NEAR(player.car.speed * std::cos(player.car.travel_dir), 0.15 * std::cos(0.1), 1e-9);
    EXPECT_NEAR(player.car.speed * std::sin(player.car.travel_dir), 0.15 * std::sin(0.1) + 0.06,
                1e-9);
    EXPECT_FLOAT_EQ(audio.car_feed[1].wall_hit_volume, 0.3F);

    hit(car_at(30.5, 10.5, 3.0, 1.0), 0.0, -9.9, 2); // nothing open within reach, no such sound
    EXPECT_DOUBLE_EQ(player.car.speed, 1.5);
    EXPECT_NEAR(player.car.travel_dir, 1.0, 1e-12);

    hit(car_at(30.5, 10.1, 3.0, -HALF_PI), 0.0, -12.0); // out of the grid altogether
    EXPECT_EQ(player.car.y, 10.1);
    EXPECT_FLOAT_EQ(audio.car_feed[0].wall_hit_volume, 1.0F);
}

TEST_F(Wall, StuckCarsSlideIntoTheOpen) {
    player.car = car_at(49.99, 30.5, 0.2, 0.0);
    double angle = 0.0;
    ASSERT_TRUE(find_open_dir(player, hall, &angle));
    EXPECT_NEAR(angle, std::numbers::pi, 1e-12);
    ASSERT_TRUE(slide_out_of_stuck(player, hall));
    EXPECT_NEAR(player.car.x, 49.93, 1e-12);
    EXPECT_DOUBLE_EQ(player.car.speed, 0.1);
    EXPECT_DOUBLE_EQ(player.car.throttle, 0.2);

    // A pocket of one cell: nothing is open and nothing changes.
    Track const pocket = track_from_rows({"*!ggggg", "ggggggg", "ggggggg", "ggggg.g", "ggggggg"});
    player.car = car_at(5.5, 3.5);
    angle = 7.0;
    EXPECT_FALSE(find_open_dir(player, pocket, &angle));
    EXPECT_EQ(angle, 7.0);
    EXPECT_FALSE(slide_out_of_stuck(player, pocket));
    EXPECT_EQ(player.car.x, 5.5);
}

struct Bump : testing::Test {
    Bump() { PIXELS_PER_CELL = 1; } // half a car is 13.2 cells long and 6.6 wide

    bool bump(CarState& a, CarState& b) { return arcade_car_bump(a, b, 0, 1, hall, audio); }

    Track hall = make_hall(400, 200);
    Audio audio;
};

TEST_F(Bump, TouchingIsNoBumpAndRestingCarsOnlyPartSilently) {
    CarState a = car_at(100.0, 100.0);
    CarState b = car_at(100.0, 113.2 + 1e-9);
    EXPECT_FALSE(bump(a, b));
    b.y = 110.2;
    EXPECT_TRUE(bump(a, b));
    EXPECT_NEAR(a.y, 98.5, 1e-9);
    EXPECT_NEAR(b.y, 111.7, 1e-9);
    EXPECT_FALSE(a.skidding || b.skidding);
    EXPECT_EQ(audio.car_feed[0].wall_hit_count.count(), 0U);
}

TEST_F(Bump, RammingSharesTheSpeed) {
    CarState a = car_at(100.0, 100.0, 0.3);
    CarState b = car_at(126.0, 100.0, 0.1);
    ASSERT_TRUE(bump(a, b));
    EXPECT_NEAR(a.speed, 0.3 - 1.02 * 0.2 / 2.0, 1e-12);
    EXPECT_NEAR(b.speed, 0.1 + 1.02 * 0.2 / 2.0, 1e-12);
    EXPECT_NEAR(a.heading, 0.0, 1e-12);
    EXPECT_TRUE(a.skidding && b.skidding);
    EXPECT_EQ(a.throttle, 0.3);
    for (CarFeed const& feed : audio.car_feed) {
        EXPECT_EQ(feed.wall_hit_count.count(), 1U);
        EXPECT_FLOAT_EQ(feed.wall_hit_volume, 0.2F);
    }
}

TEST_F(Bump, AHitOffCentreTurnsTheCarAtMostAQuarterRadian) {
    for (double const speed : {0.4, 40.0}) {
        CarState a = car_at(112.0, 88.0, speed, HALF_PI); // into the nose of `b` from above
        CarState b = car_at(100.0, 106.0);
        ASSERT_TRUE(bump(a, b));
        EXPECT_GT(b.heading, speed < 1.0 ? 0.05 : 0.25 - 1e-12); // pushed downwards at its nose
        EXPECT_LE(b.heading, 0.25);
    }
}

TEST_F(Bump, AWallBehindOneCarGivesAllToTheOther) {
    double const border = 410.0;
    CarState a = car_at(border - 26.0, 100.0, 0.3);
    CarState b = car_at(border - 0.1, 100.0);
    ASSERT_TRUE(bump(a, b));
    EXPECT_NEAR(a.x, border - 26.5, 1e-9); // the whole depth of 0.5
    EXPECT_EQ(b.x, border - 0.1);
    EXPECT_NEAR(a.speed * std::cos(a.travel_dir), 0.3 - 1.02 * 0.3, 1e-12);
    EXPECT_EQ(b.speed, 0.0);
    EXPECT_FALSE(b.skidding);

    // Both in walls: nobody moves, and the driver only loses what drives it into the other.
    CarState c = car_at(3.0, 100.0, 0.3, 0.5);
    CarState d = car_at(-20.0, 100.0);
    ASSERT_TRUE(arcade_car_bump(d, c, 2, 2, hall, audio)); // already parting
    EXPECT_EQ(c.speed, 0.3);
    d.speed = 1.0;
    ASSERT_TRUE(arcade_car_bump(d, c, 2, 2, hall, audio));
    EXPECT_EQ(d.x, -20.0);
    EXPECT_NEAR(d.speed, 0.0, 1e-12);
    EXPECT_EQ(c.speed, 0.3);
    EXPECT_EQ(audio.car_feed[0].wall_hit_count.count(), 1U);
}

} // namespace
