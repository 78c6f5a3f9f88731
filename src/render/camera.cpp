#include "render/camera.h"

#include "render/view_settings.h"

#include <algorithm>
#include <cmath>

namespace {

// The panning camera is a critically damped spring of natural frequency 29 per second:
// stiffness is the frequency squared, damping twice the frequency.
constexpr double SPRING_STIFFNESS = 841.0;
constexpr double SPRING_DAMPING = 58.0;
// Twice the deceleration of 80 cells per second squared with which it brakes into a bound:
// v = sqrt(2 a s) is the largest speed from which it can still stop within s.
constexpr double TWICE_BRAKING = 160.0;
constexpr double STILL = 0.0001;          // cells per second
constexpr double LONGEST_STEP = 1.0 / 30; // seconds; a longer frame would shake the spring apart

// Where the camera may be on one axis, and where it wants to be, in cells.
struct AxisGoal {
    double low;
    double high;
    double target;
};

AxisGoal axis_goal(double car, double track_size, double view_size) {
    if (view_size >= track_size) {
        double const middle = track_size / 2;
        return {middle, middle, middle};
    }
    double const low = view_size / 2;
    double const high = track_size - view_size / 2;
    return {low, high, std::clamp(car, low, high)};
}

// Largest speed towards a bound that lies `room` cells ahead.
double braking_limit(double room) {
    return room <= 0.0 ? 0.0 : std::sqrt(TWICE_BRAKING * room);
}

void spring_axis(double& position, double& velocity, AxisGoal const& goal, double dt) {
    velocity += (-SPRING_STIFFNESS * (position - goal.target) - SPRING_DAMPING * velocity) * dt;
    if (velocity > STILL) {
        velocity = std::min(velocity, braking_limit(goal.high - position));
    } else if (velocity < -STILL) {
        velocity = std::max(velocity, -braking_limit(position - goal.low));
    }
    position += velocity * dt;
    if (position < goal.low) {
        position = goal.low;
        velocity = std::max(velocity, 0.0);
    }
    if (position > goal.high) {
        position = goal.high;
        velocity = std::min(velocity, 0.0);
    }
}

void snap(PlayerView& view, AxisGoal const& goal_x, AxisGoal const& goal_y) {
    view.cam_x = goal_x.target;
    view.cam_y = goal_y.target;
    view.cam_vx = 0.0;
    view.cam_vy = 0.0;
}

} // namespace

void update_camera(PlayerView& view, CarState const& car, Track const& track, double dt,
                   double view_w, double view_h) {
    AxisGoal const goal_x = axis_goal(car.x, track.width, view_w);
    AxisGoal const goal_y = axis_goal(car.y, track.height, view_h);
    if (!view.cam_ready) {
        view.cam_ready = true;
        snap(view, goal_x, goal_y);
        return;
    }
    if (dt <= 0.0) return;
    if (!smooth_camera) {
        snap(view, goal_x, goal_y);
        return;
    }
    double const step = std::min(dt, LONGEST_STEP);
    spring_axis(view.cam_x, view.cam_vx, goal_x, step);
    spring_axis(view.cam_y, view.cam_vy, goal_y, step);
}
