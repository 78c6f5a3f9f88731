#include "world/wall_bounce.h"

#include "world/geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int OPEN_RADIUS = 8;     // cells: how far the wall's direction is read from
constexpr double WALL_PUSH = 0.06; // cells per tick off the wall, and cells out of a stuck place
constexpr int OPEN_DIRECTIONS = 24;
constexpr float QUIET_HIT = 0.2F;
constexpr float LOUD_HIT = 1.0F;

// Sum of the offsets to all open cells within the radius: points away from the wall.
Vec2 open_side(CarState const& car, Track const& track) {
    Cell const at = cell_at(car.x, car.y);
    Vec2 sum;
    for (int dy = -OPEN_RADIUS; dy <= OPEN_RADIUS; ++dy) {
        for (int dx = -OPEN_RADIUS; dx <= OPEN_RADIUS; ++dx) {
            if (dx * dx + dy * dy > OPEN_RADIUS * OPEN_RADIUS) continue;
            if (!cell_is_passable(track, at.column + dx, at.row + dy)) continue;
            sum.x += dx;
            sum.y += dy;
        }
    }
    return sum;
}

// The part of `velocity` that runs into the wall turned round. `normal` is a unit vector.
Vec2 mirrored(Vec2 velocity, Vec2 normal) {
    double const into = dot(velocity, normal);
    return into < 0.0 ? velocity - 2.0 * into * normal : velocity;
}

// How many one-cell steps in this direction stay on passable cells, 0..8.
int open_reach(CarState const& car, Track const& track, double angle) {
    Vec2 const along = direction(angle);
    int reach = 0;
    while (reach < OPEN_RADIUS && position_is_passable(track, car.x + (reach + 1) * along.x,
                                                       car.y + (reach + 1) * along.y)) {
        ++reach;
    }
    return reach;
}

} // namespace

bool car_on_impassable(CarState const& car, Track const& track) {
    return !position_is_passable(track, car.x, car.y);
}

float bounce_off_wall(CarState& car, Track const& track, CarState const& before) {
    Vec2 const open = open_side(car, track);
    double const open_length = length(open);
    bool const has_normal = open_length > TINY_LENGTH;
    Vec2 const normal =
        has_normal ? Vec2{open.x / open_length, open.y / open_length} : Vec2{0.0, 0.0};

    Vec2 const bounced = mirrored(before.speed * direction(before.travel_dir), normal);
    double speed = 0.5 * length(bounced);
    double course = speed > TINY_LENGTH ? angle_of(bounced) : before.travel_dir;
    if (has_normal) {
        Vec2 const away = speed * direction(course) + WALL_PUSH * normal;
        speed = length(away);
        course = speed > TINY_LENGTH ? angle_of(away) : before.travel_dir;
    }

    car = before;
    car.speed = speed;
    car.travel_dir = course;
    car.throttle = 0.5 * before.throttle;
    car.skidding = true; // keeps the bounce: grip would snap back to the nose at once
    car.in_wall = false;
    return std::clamp(static_cast<float>(before.speed), QUIET_HIT, LOUD_HIT);
}

bool find_open_dir(CarState const& car, Track const& track, double* angle) {
    Vec2 const open = open_side(car, track);
    double const preferred = length(open) > TINY_LENGTH ? angle_of(open) : car.travel_dir;
    int best_reach = 0;
    double best_off = 0.0;
    for (int i = 0; i < OPEN_DIRECTIONS; ++i) {
        double const candidate = i * 2.0 * std::numbers::pi / OPEN_DIRECTIONS;
        int const reach = open_reach(car, track, candidate);
        double const off = std::abs(wrap_angle(candidate - preferred));
        if (reach < best_reach || reach == 0) continue;
        if (reach == best_reach && off >= best_off) continue;
        best_reach = reach;
        best_off = off;
        *angle = candidate;
    }
    return best_reach > 0;
}

bool slide_out_of_stuck(CarState& car, Track const& track) {
    double angle = 0.0;
    if (!find_open_dir(car, track, &angle)) return false;
    Vec2 const out = Vec2{car.x, car.y} + WALL_PUSH * direction(angle);
    if (!position_is_passable(track, out.x, out.y)) return false;
    car.in_wall = false;
    car.speed *= 0.5;
    car.x = out.x;
    car.y = out.y;
    return true;
}
