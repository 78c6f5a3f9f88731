#include "race/player.h"
#include "support/tracks.h"
#include "world/ai_driver.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

class Driver : public testing::Test {
protected:
    Driver() { other.car.x = -1000.0; }

    Input drive(double x, double y, double heading, double speed) {
        me.car.x = x;
        me.car.y = y;
        me.car.heading = heading;
        me.car.speed = speed;
        return ai_drive(me, other, track);
    }

    // A hall so wide that no ray from its middle ends at a wall.
    Track track = make_hall(1000, 1000);
    Player me;
    Player other;
};

TEST_F(Driver, RaysStopAtTheFirstProbeInAWall) {
    EXPECT_EQ(clear_distance(track, 510.5, 510.5, 0.0, 450.0), 450.0);
    EXPECT_EQ(clear_distance(track, 1000.0, 510.5, 0.0, 450.0), 12.0); // the wall begins at 1010
    EXPECT_EQ(clear_distance(track, 10.5, 510.5, std::numbers::pi, 100.0), 3.0);
    EXPECT_EQ(clear_distance(track, 510.5, 510.5, 0.0, 2.9), 2.9);
    EXPECT_EQ(clear_distance(track, 2.0, 510.5, std::numbers::pi, 100.0), 3.0); // -1 is no cell
}

TEST_F(Driver, OpenRoadIsDrivenStraightAtFullSpeed) {
    track.start_distance.clear();
    Input const input = drive(510.5, 510.5, 0.0, 0.2);
    EXPECT_TRUE(input.gas);
    EXPECT_FALSE(input.brake || input.left || input.right);
    Input const fast = drive(510.5, 510.5, 0.0, 0.345); // above 0.34, below 1.05 times it
    EXPECT_FALSE(fast.gas || fast.brake);
    EXPECT_TRUE(drive(510.5, 510.5, 0.0, 0.36).brake);
}

TEST_F(Driver, WallsAreBrakedForAndTurnedFrom) {
    track.start_distance.clear();
    EXPECT_TRUE(drive(980.0, 510.5, 0.0, 0.0735).brake == false);
    EXPECT_TRUE(drive(980.0, 510.5, 0.0, 0.08).brake);
    EXPECT_TRUE(drive(980.0, 510.5, 0.0, 0.06).gas);
    EXPECT_TRUE(drive(510.5, 40.0, -0.4, 0.2).right); // the upper wall comes nearer
    EXPECT_TRUE(drive(510.5, 980.0, 0.4, 0.2).left);
}

TEST_F(Driver, OnlyAWayForwardsCounts) {
    // Progress grows downwards, one step a row: facing +x, the lower half of the fan leads on.
    for (int row = 0; row < track.height; ++row) {
        for (int column = 0; column < track.width; ++column) {
            track.start_distance[track.index(column, row)] = row;
        }
    }
    track.start_distance_max = track.height;
    EXPECT_TRUE(drive(510.5, 510.5, 0.0, 0.2).right);
    EXPECT_TRUE(drive(510.5, 510.5, std::numbers::pi, 0.2).left);
}

TEST_F(Driver, ChasesTheOtherCarUnlessItIsBehindOrOutOfSight) {
    track.start_distance.assign(track.start_distance.size(), 50);
    track.start_distance_max = 1000;
    other.car.x = 540.5;
    other.car.y = 530.5;
    EXPECT_TRUE(drive(510.5, 510.5, 0.0, 0.2).right);
    std::int32_t& progress = track.start_distance[track.index(540, 530)];
    progress = 41;
    EXPECT_TRUE(drive(510.5, 510.5, 0.0, 0.2).right);
    progress = 39;
    EXPECT_FALSE(drive(510.5, 510.5, 0.0, 0.2).right);
    progress = -1;
    EXPECT_TRUE(drive(510.5, 510.5, 0.0, 0.2).right);
    for (int dy = -3; dy <= 3; ++dy) { // a block half way hides it, small enough to drive round
        for (int dx = -3; dx <= 3; ++dx) track.cells[track.index(525 + dx, 520 + dy)] = 'b';
    }
    other.car.x = 600.5;
    EXPECT_FALSE(drive(510.5, 510.5, 0.0, 0.2).right); // and this is out of range
}

} // namespace
