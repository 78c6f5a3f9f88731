#include "world/car_physics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr Input GAS{.gas = true};
constexpr Input BRAKE{.brake = true};

void drive(CarState& car, Input input, int ticks, double resist = 0.0) {
    for (int i = 0; i < ticks; ++i) physics_step_cartest(car, input, {resist});
}

CarState rolling(double throttle) {
    return {.speed = throttle, .throttle = throttle};
}

TEST(CarPhysics, GathersSpeedUnderGasAsTuned) {
    CarState car;
    drive(car, GAS, 1);
    EXPECT_DOUBLE_EQ(car.speed, 0.0006);
    EXPECT_DOUBLE_EQ(car.throttle, 0.000475);
    drive(car, GAS, 99);
    EXPECT_NEAR(car.speed, 0.04426, 5e-6);
    drive(car, GAS, 900);
    EXPECT_NEAR(car.speed, 0.2462, 5e-5);
    EXPECT_NEAR(car.x, 153.0, 0.5);
    drive(car, GAS, 2000);
    EXPECT_NEAR(car.speed, 0.3133, 5e-5);
    drive(car, GAS, 20000);
    EXPECT_NEAR(car.throttle, 0.4 - 1.0 / 12.0, 1e-9);
    EXPECT_NEAR(car.speed, 0.31679, 5e-6);
}

TEST(CarPhysics, CoastsToRest) {
    CarState car = rolling(0.4 - 1.0 / 12.0);
    int ticks = 0;
    for (; car.throttle > 0.0; ++ticks) drive(car, {}, 1);
    EXPECT_NEAR(ticks, 2534, 1);
    double const stopped_at = car.x;
    drive(car, {}, 2);
    EXPECT_EQ(car.speed, 0.0);
    EXPECT_EQ(car.x, stopped_at);
}

TEST(CarPhysics, ReversesWithTheBrakeAndSteersTheOtherWayRound) {
    CarState car;
    drive(car, BRAKE, 5000);
    for (int i = 0; i < 10; ++i) {
        drive(car, BRAKE, 1);
        EXPECT_GE(car.throttle, -0.12);
        EXPECT_LE(car.throttle, -0.119875 + 1e-12);
    }
    EXPECT_FALSE(car.skidding);
    EXPECT_NEAR(car.speed, 0.12, 1e-9);
    EXPECT_LT(car.x, 0.0);
    EXPECT_NEAR(std::abs(car.travel_dir), std::numbers::pi, 1e-9);
    drive(car, {.brake = true, .left = true}, 1);
    EXPECT_GT(car.heading, 0.0);

    CarState forwards = rolling(0.2);
    drive(forwards, {.left = true}, 1);
    EXPECT_NEAR(forwards.heading, -0.01 * 0.2 / 0.7, 1e-12); // radius 300 * 0.2 + 10 cells
}

TEST(CarPhysics, BrakeAtTheThresholdReversesAndAboveItSlides) {
    CarState slow = rolling(0.005);
    drive(slow, BRAKE, 1);
    EXPECT_FALSE(slow.skidding);
    CarState fast = rolling(0.2);
    drive(fast, {.gas = true, .brake = true}, 1);
    EXPECT_FALSE(fast.skidding); // in line with its motion: grip is back at once
    double const braked = 0.2 * 0.998;
    EXPECT_DOUBLE_EQ(fast.throttle, braked + (0.4 - braked) * 0.0005 * 3.0 - 0.25 * 0.0005);
}

TEST(CarPhysics, SlideEndsWhenTheNoseLinesUpUnderThrottle) {
    CarState car{.speed = 0.3, .travel_dir = 0.5, .throttle = 0.3, .skidding = true};
    drive(car, {.right = true}, 50); // 0.0039 radians a tick towards the motion
    EXPECT_TRUE(car.skidding);
    drive(car, {.right = true}, 120);
    EXPECT_FALSE(car.skidding);
    EXPECT_GT(car.heading, 0.3);
    constexpr double BACK = std::numbers::pi - 0.02; // nose and motion on either side of it
    CarState across{.speed = 0.3, .heading = BACK, .travel_dir = -BACK, .throttle = 0.3};
    across.skidding = true;
    drive(across, {}, 1);
    EXPECT_FALSE(across.skidding);

    CarState free{.speed = 0.3, .skidding = true};
    drive(free, {}, 173);
    EXPECT_NEAR(free.speed, 0.15, 0.0005) << "half of it without throttle";
    EXPECT_TRUE(free.skidding);
    drive(free, {.gas = true, .left = true, .right = true}, 1);
    EXPECT_EQ(free.heading, 0.0);
}

TEST(CarPhysics, SurfaceTakesDistanceButNotThrottleAndHeadingWraps) {
    CarState free = rolling(0.3);
    CarState held = rolling(0.3);
    drive(free, GAS, 100);
    drive(held, GAS, 100, 0.0012);
    EXPECT_EQ(free.throttle, held.throttle);
    EXPECT_NEAR(held.x, free.x * (1.0 - 0.0012), 1e-9);
    drive(held, GAS, 1, 1.5);
    EXPECT_EQ(held.speed, 0.0);

    CarState free_slide{.speed = 0.3, .skidding = true};
    CarState held_slide = free_slide;
    drive(free_slide, {}, 100);
    drive(held_slide, {}, 100, 0.0012);
    EXPECT_NEAR(held_slide.speed, free_slide.speed * std::pow(1.0 - 0.0012, 100), 1e-12);

    CarState turning = rolling(0.3);
    turning.heading = std::numbers::pi - 0.001;
    drive(turning, {.right = true}, 1);
    EXPECT_LT(turning.heading, -3.0);
}

} // namespace
