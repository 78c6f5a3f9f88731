#include "world/car_bump.h"

#include "base/car_size.h"
#include "world/car_physics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

double arcade_restitution = 0.02;
double arcade_friction = 0.3;
double arcade_spin = 15.0;

namespace {

constexpr double MAX_SPIN = 0.25; // radians per bump
constexpr float QUIET_BUMP = 0.2F;
constexpr float LOUD_BUMP = 1.0F;

// Half sizes of both cars' boxes, in cells: they follow the drawn size.
struct Box {
    double length;
    double width;
};

Box car_box() {
    double const unit = CAR_MAGNIFIER / PIXELS_PER_CELL;
    return {CAR_HALF_LENGTH * unit, CAR_HALF_WIDTH * unit};
}

struct Axes {
    Vec2 forward;
    Vec2 side;
};

Axes axes_of(CarState const& car) {
    Vec2 const forward = direction(car.heading);
    return {forward, side_of(forward)};
}

double reach_along(Vec2 axis, Axes const& axes, Box const& box) {
    return box.length * std::abs(dot(axis, axes.forward)) +
           box.width * std::abs(dot(axis, axes.side));
}

Vec2 position(CarState const& car) {
    return {car.x, car.y};
}

struct Contact {
    Vec2 normal; // unit vector from the first car to the second
    double depth = 0.0;
};

// True if the cars are so far apart that no turn of theirs could make the boxes meet.
bool far_apart(Vec2 between, Box const& box) {
    double const reach = 2.0 * length({box.length, box.width}) + TINY_LENGTH;
    return dot(between, between) > reach * reach;
}

// The separating axis test: nothing if any of the four axes keeps the boxes apart, else the axis
// of least overlap.
std::optional<Contact> find_contact(CarState const& a, CarState const& b, Box const& box) {
    Vec2 const between = position(b) - position(a);
    if (far_apart(between, box)) return std::nullopt;
    Axes const axes_a = axes_of(a);
    Axes const axes_b = axes_of(b);
    std::optional<Contact> least;
    for (Vec2 const axis : {axes_a.forward, axes_a.side, axes_b.forward, axes_b.side}) {
        double const along = dot(between, axis);
        double const overlap =
            reach_along(axis, axes_a, box) + reach_along(axis, axes_b, box) - std::abs(along);
        if (overlap <= 0.0) return std::nullopt;
        if (least && overlap >= least->depth) continue;
        least = Contact{along < 0.0 ? -1.0 * axis : axis, overlap};
    }
    return least;
}

// How much each car gives way to the other, 0 or 1.
struct Weights {
    double a = 0.0;
    double b = 0.0;
};

void move_to(CarState& car, Vec2 to) {
    car.x = to.x;
    car.y = to.y;
}

bool is_passable(Track const& track, Vec2 at) {
    return position_is_passable(track, at.x, at.y);
}

// Moves a car by the whole `push` if it finds room there, else by half of it.
void give_way(CarState& car, Vec2 push, Track const& track) {
    Vec2 const whole = position(car) + push;
    move_to(car, is_passable(track, whole) ? whole : position(car) + 0.5 * push);
}

// Moves the cars apart without pushing one into a wall.
Weights push_apart(CarState& a, CarState& b, Contact const& contact, Track const& track) {
    Vec2 const half = 0.5 * contact.depth * contact.normal;
    Vec2 const to_a = position(a) - half;
    Vec2 const to_b = position(b) + half;
    Weights const weights{is_passable(track, to_a) ? 1.0 : 0.0,
                          is_passable(track, to_b) ? 1.0 : 0.0};
    if (weights.a > 0.0 && weights.b > 0.0) {
        move_to(a, to_a);
        move_to(b, to_b);
    } else if (weights.b > 0.0) {
        give_way(b, contact.depth * contact.normal, track);
    } else if (weights.a > 0.0) {
        give_way(a, -contact.depth * contact.normal, track);
    }
    return weights;
}

struct Velocities {
    Vec2 a;
    Vec2 b;
};

// Nearly inelastic along the normal, with friction across it.
Velocities after_impulse(Velocities v, Vec2 normal, double closing, Weights const& weights) {
    double const total = weights.a + weights.b;
    Vec2 const relative = v.a - v.b;
    double const impulse = -(1.0 + arcade_restitution) * closing / total;
    v.a = v.a + impulse * weights.a * normal;
    v.b = v.b - impulse * weights.b * normal;

    Vec2 const sideways = relative - closing * normal;
    double const slip = length(sideways);
    if (slip > TINY_LENGTH) {
        Vec2 const along{sideways.x / slip, sideways.y / slip};
        double const limit = std::abs(impulse) * arcade_friction;
        double const rub = std::clamp(-dot(relative, along) / total, -limit, limit);
        v.a = v.a + rub * weights.a * along;
        v.b = v.b - rub * weights.b * along;
    }
    return v;
}

// Of two cars that cannot give way each loses what drives it into the other.
Velocities when_wedged(Velocities v, Vec2 normal) {
    v.a = v.a - std::max(dot(v.a, normal), 0.0) * normal;
    v.b = v.b - std::min(dot(v.b, normal), 0.0) * normal;
    return v;
}

// The change of heading from a change of velocity at the point of the box nearest to the other
// car, which lies at `to_other`.
double spin_from(Axes const& axes, Vec2 to_other, Vec2 change, Box const& box) {
    Vec2 const lever =
        std::clamp(dot(to_other, axes.forward), -box.length, box.length) * axes.forward +
        std::clamp(dot(to_other, axes.side), -box.width, box.width) * axes.side;
    double const inertia = (box.length * box.length + box.width * box.width) / 3.0;
    return std::clamp(cross(lever, change) * arcade_spin / inertia, -MAX_SPIN, MAX_SPIN);
}

// Gives a car its new velocity; in skid mode, since grip would undo it in the next tick.
void take_hit(CarState& car, Vec2 old_velocity, Vec2 velocity, Vec2 to_other, Box const& box) {
    double const spin = spin_from(axes_of(car), to_other, velocity - old_velocity, box);
    car.heading = wrap_angle(car.heading + spin);
    car.speed = length(velocity);
    if (car.speed > TINY_LENGTH) car.travel_dir = angle_of(velocity);
    car.skidding = true;
}

} // namespace

Bump bump_cars(CarState& a, CarState& b, Track const& track) {
    Box const box = car_box();
    std::optional<Contact> const contact = find_contact(a, b, box);
    if (!contact) return {};
    Vec2 const normal = contact->normal;
    Weights const weights = push_apart(a, b, *contact, track);

    Velocities const before{velocity_of(a), velocity_of(b)};
    double const closing = dot(before.a - before.b, normal);
    if (closing <= 0.0) return {.touching = true}; // already parting

    bool const wedged = weights.a + weights.b == 0.0;
    Velocities const after =
        wedged ? when_wedged(before, normal) : after_impulse(before, normal, closing, weights);
    bool const hit_a = wedged ? dot(before.a, normal) > 0.0 : weights.a > 0.0;
    bool const hit_b = wedged ? dot(before.b, normal) < 0.0 : weights.b > 0.0;
    Vec2 const between = position(b) - position(a);
    if (hit_a) take_hit(a, before.a, after.a, between, box);
    if (hit_b) take_hit(b, before.b, after.b, -1.0 * between, box);
    if (!hit_a && !hit_b) return {.touching = true};
    return {.touching = true,
            .loudness = std::clamp(static_cast<float>(closing), QUIET_BUMP, LOUD_BUMP)};
}
