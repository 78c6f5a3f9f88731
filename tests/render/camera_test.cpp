#include "render/camera.h"
#include "render/scene.h"

#include <cmath>

TEST(CameraTest, KeepsTheViewInsideTheTrack) {
    Track const track = road(100, 30);
    PlayerView view;
    update_camera(view, car_at(3, 5), track, 0.0, 40, 50); // the first call places it, time or not
    EXPECT_TRUE(view.cam_ready);
    EXPECT_EQ(view.cam_x, 20); // half a view from the edge
    EXPECT_EQ(view.cam_y, 15); // lower than the view: pinned to the middle
    update_camera(view, car_at(50, 5), track, 0.0, 40, 50);
    EXPECT_EQ(view.cam_x, 20) << "a frame of no time changes nothing";
    update_camera(view, car_at(99, 5), track, 0.016, 40, 50);
    EXPECT_EQ(view.cam_x, 80);
}

TEST(CameraTest, PansAsADampedSpring) {
    smooth_camera = true;
    Track const track = road(1000, 1000);
    PlayerView view;
    update_camera(view, car_at(500, 500), track, 0.01, 40, 40);
    update_camera(view, car_at(501, 500), track, 0.01, 40, 40);
    EXPECT_DOUBLE_EQ(view.cam_vx, 8.41);
    EXPECT_DOUBLE_EQ(view.cam_x, 500.0841);
    update_camera(view, car_at(501, 500), track, 0.01, 40, 40);
    EXPECT_NEAR(view.cam_vx, 8.41 + 0.01 * (841 * 0.9159 - 58 * 8.41), 1e-9);
    EXPECT_EQ(view.cam_y, 500);

    PlayerView late;
    PlayerView in_time;
    for (PlayerView* other : {&late, &in_time}) {
        update_camera(*other, car_at(500, 500), track, 0.01, 40, 40);
        update_camera(*other, car_at(501, 500), track, other == &late ? 0.1 : 1.0 / 30, 40, 40);
    }
    EXPECT_EQ(late.cam_x, in_time.cam_x) << "a late frame must not shake the spring apart";
}

TEST(CameraTest, BrakesIntoTheBoundWithoutOvershoot) {
    smooth_camera = true;
    Track const track = road(1000, 100);
    PlayerView view;
    update_camera(view, car_at(500, 50), track, 0.01, 100, 100);
    for (int frame = 0; frame < 1000; ++frame) {
        double const room = 950 - view.cam_x;
        update_camera(view, car_at(999, 50), track, 0.01, 100, 100);
        ASSERT_LE(view.cam_x, 950);
        ASSERT_LE(view.cam_vx, std::sqrt(160 * room) + 1e-9);
    }
    EXPECT_NEAR(view.cam_x, 950, 1e-3);

    smooth_camera = false; // and back: at once, at rest
    update_camera(view, car_at(100, 50), track, 0.01, 100, 100);
    EXPECT_EQ(view.cam_x, 100);
    EXPECT_EQ(view.cam_vx, 0);
}
