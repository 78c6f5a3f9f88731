#include "world/car_physics.h"

#include <algorithm>
#include <cmath>

double SIM_ACC = 0.0005;
double SIM_TURN = 0.01;
double SIM_GRIP = 1.0;
double SIM_SKID = 0.996;
double SIM_SKID_THR = 0.004;
double SIM_VSCALE = 1.0;
double SIM_REV_MAX = 0.4;
double SIM_TURN_SK = 0.39;
double SIM_SIDE_GRIP = 0.0025;
double SIM_RW_RESIST = 0.0012;
double SIM_SPEED = 10.0;

namespace {

constexpr double ROLLING_THROTTLE = 0.005; // above it the brake slides the car, below it reverses
constexpr double BRAKE_KEEP = 0.998;       // share of the throttle that a braked tick keeps
constexpr double REGRIP_THROTTLE = 0.1;    // a slower skid does not end by itself
constexpr double REGRIP_SLIP = 0.1;        // radians between nose and motion that end a skid

void pull_gas(double& throttle) {
    throttle += (SIM_REV_MAX - throttle) * SIM_ACC * 3.0;
    throttle = std::min(throttle, 1.0);
}

void pull_reverse(double& throttle) {
    throttle = std::max(-0.3 * SIM_REV_MAX, throttle - (SIM_REV_MAX + throttle) * SIM_ACC * 5.0);
}

// Works the pedals; true if the car skids in this tick. The brake decides before the gas: it
// throws a rolling car into a skid and gives a reversing one its grip back.
bool work_pedals(double& throttle, Input const& input, bool was_skidding) {
    bool skid = was_skidding;
    if (input.brake) {
        skid = throttle > ROLLING_THROTTLE;
        if (skid) {
            throttle *= BRAKE_KEEP;
        } else {
            pull_reverse(throttle);
        }
    }
    if (input.gas) pull_gas(throttle);
    return skid;
}

// Radians per tick at full lock in grip mode: a turning radius of 300 * |throttle| + 10 cells,
// and the other way round in reverse.
double grip_turn(double throttle) {
    double const size = std::abs(throttle);
    double const sign = throttle < 0.0 ? -1.0 : 1.0;
    return SIM_TURN * size * (1.0 / (3.0 * size + 0.1)) * sign;
}

// Full grip keeps nothing of the old velocity, which is then not worked out at all: a sixth of the
// tick's time. Only where a component is 0 may nothing of it still decide whether that is +0 or -0.
Vec2 grip_velocity(double throttle, Vec2 nose, CarState const& car) {
    Vec2 const along = SIM_GRIP * throttle * nose;
    if (SIM_GRIP == 1.0 && along.x != 0.0 && along.y != 0.0) return along;
    return along + (1.0 - SIM_GRIP) * velocity_of(car);
}

Vec2 skid_velocity(double throttle, Vec2 nose, CarState const& car) {
    Vec2 slid = SIM_SKID_THR * throttle * nose + SIM_SKID * velocity_of(car);
    if (SIM_SIDE_GRIP > 0.0) {
        Vec2 const side = side_of(nose);
        slid = slid - SIM_SIDE_GRIP * (dot(slid, side) * side);
    }
    return slid;
}

double steering(Input const& input, double turn) {
    double change = 0.0;
    if (input.left) change -= turn;
    if (input.right) change += turn;
    return change;
}

double coast(double throttle) {
    double const loss = 0.25 * SIM_ACC;
    return throttle > 0.0 ? std::max(throttle - loss, 0.0) : std::min(throttle + loss, 0.0);
}

} // namespace

void physics_step_cartest(CarState& car, Input const& input, SurfaceEffect const& surface) {
    double throttle = car.throttle;
    bool const skid = work_pedals(throttle, input, car.skidding);

    Vec2 const nose = direction(car.heading);
    Vec2 velocity = skid ? skid_velocity(throttle, nose, car) : grip_velocity(throttle, nose, car);
    double const turn = skid ? SIM_TURN * SIM_TURN_SK : grip_turn(throttle);

    if (surface.resist > 0.0) velocity = std::max(1.0 - surface.resist, 0.0) * velocity;

    car.x += SIM_VSCALE * velocity.x;
    car.y += SIM_VSCALE * velocity.y;
    car.heading = wrap_angle(car.heading + steering(input, turn));

    double const course = angle_of(velocity);
    bool const slow = std::abs(throttle) < REGRIP_THROTTLE;
    car.skidding = skid && (slow || std::abs(wrap_angle(course - car.heading)) >= REGRIP_SLIP);

    car.throttle = coast(throttle);
    car.speed = length(velocity);
    car.travel_dir = car.speed > TINY_LENGTH ? course : car.heading;
}
