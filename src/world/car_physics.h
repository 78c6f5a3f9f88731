#pragma once

// The motion of one car: a single step of 1 ms, without forces or masses. In grip mode the
// velocity is the nose direction times the throttle; in skid mode it mostly keeps its own course.

#include "base/car_state.h"
#include "world/geometry.h"

// What the ground under a car does to it.
struct SurfaceEffect {
    // Share of the velocity lost in this tick, 0 for none. With grip each tick makes the velocity
    // anew, so that the car is slower by that share; a skid keeps its velocity and loses the share
    // again in every tick: what is little with grip stops a slide soon.
    double resist = 0.0;
};

// The tuning, read anew at every step: a change takes effect with the next tick.
extern double SIM_ACC;       // acceleration unit, per tick
extern double SIM_TURN;      // steering unit, radians per tick
extern double SIM_GRIP;      // share of the velocity that grip mode replaces, 0..1
extern double SIM_SKID;      // share of the velocity that skid mode keeps per tick, 0..1
extern double SIM_SKID_THR;  // share of nose direction times throttle that skid mode adds per tick
extern double SIM_VSCALE;    // factor from velocity to position change
extern double SIM_REV_MAX;   // throttle that gas pulls towards; -0.3 times it limits reverse
extern double SIM_TURN_SK;   // factor on SIM_TURN while skidding
extern double SIM_SIDE_GRIP; // share of the sideways velocity that a skid loses per tick
extern double SIM_RW_RESIST; // resist of the red and white kerb cells
extern double SIM_SPEED;     // ticks per 10 ms step, used as a whole number of at least 1

// Cells per tick.
inline Vec2 velocity_of(CarState const& car) {
    return car.speed * direction(car.travel_dir);
}

// Advances `car` by one tick. Touches nothing but its arguments and reads the tuning above.
void physics_step_cartest(CarState& car, Input const& input, SurfaceEffect const& surface);
