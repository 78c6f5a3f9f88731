#include "world/driver.h"

#include "world/geometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int PROBE_STEP = 3;        // cells between two probes of a ray
constexpr int RAYS_TO_A_SIDE = 7;    // the fan covers one radian to each side
constexpr int FRONT_RAYS = 2;        // rays to each side of the nose that see walls ahead
constexpr double PROGRESS_AT = 40.0; // cells along a ray where its progress is read
constexpr double CHASE_RANGE = 80.0; // cells
constexpr double CHASE_ANGLE = 1.2;  // radians
constexpr double TOP_SPEED = 0.34;   // cells per tick
constexpr double LEAST_SPEED = 0.07;

// Rounds down, as floor does, for what fits an int: twice as fast where floor is a call.
int floor_cell(double v) {
    int const cut = static_cast<int>(v);
    return cut - (static_cast<double>(cut) > v ? 1 : 0);
}

// Progress round the lap at a position: steps from the start, -1 where there is none.
int progress_at(Track const& track, double x, double y) {
    int const column = floor_cell(x);
    int const row = floor_cell(y);
    if (!track.contains(column, row) || track.start_distance.empty()) return -1;
    return track.start_distance[track.index(column, row)];
}

// How far `there` lies ahead of `here` on the lap, negative for behind.
double lap_difference(Track const& track, int there, int here) {
    double const lap = track.start_distance_max + 2.0;
    double difference = static_cast<double>(there) - here;
    while (difference > lap / 2.0) difference -= lap;
    while (difference < -lap / 2.0) difference += lap;
    return difference;
}

// What the fan of rays says.
struct View {
    double front = 0.0; // cells of open way ahead
    double steer = 0.0; // radians from the heading to the most open way forwards
};

// 1 for a ray that runs forwards along the course, down to 0.05 for one that runs back.
double forward_weight(Track const& track, CarState const& car, double angle, double clear,
                      int here) {
    if (here < 0) return 1.0;
    double const at = std::min(PROGRESS_AT, clear);
    Vec2 const end = Vec2{car.x, car.y} + at * direction(angle);
    int const there = progress_at(track, end.x, end.y);
    if (there < 0) return 1.0;
    double const ahead = lap_difference(track, there, here);
    return 0.95 / (exponential(-(ahead + 8.0) / 3.0) + 1.0) + 0.05;
}

View look_ahead(Track const& track, CarState const& car, int here) {
    double const range = std::clamp(600.0 * car.speed + 150.0, 150.0, 450.0);
    View view{range, 0.0};
    Vec2 votes;
    for (int i = -RAYS_TO_A_SIDE; i <= RAYS_TO_A_SIDE; ++i) {
        double const offset = i / static_cast<double>(RAYS_TO_A_SIDE);
        double const angle = car.heading + offset;
        double const clear = clear_distance(track, car.x, car.y, angle, range);
        if (std::abs(i) <= FRONT_RAYS) view.front = std::min(view.front, clear);
        double const weight = forward_weight(track, car, angle, clear, here);
        votes = votes + clear * clear * direction(0.5 * offset).x * weight * direction(offset);
    }
    view.steer = angle_of(votes);
    return view;
}

// True if the other car is near, in sight, in front and not behind on the lap. `bearing` receives
// its direction relative to the heading.
bool is_chasing(Track const& track, CarState const& car, CarState const& prey, int here,
                double& bearing) {
    int const there = progress_at(track, prey.x, prey.y);
    if (there >= 0 && here >= 0 && lap_difference(track, there, here) <= -10.0) return false;
    Vec2 const way = Vec2{prey.x, prey.y} - Vec2{car.x, car.y};
    double const distance = length(way);
    if (distance >= CHASE_RANGE) return false;
    double const angle = angle_of(way);
    bearing = wrap_angle(angle - car.heading);
    if (std::abs(bearing) >= CHASE_ANGLE) return false;
    return clear_distance(track, car.x, car.y, angle, distance + 4.0) >= distance - 4.0;
}

} // namespace

double clear_distance(Track const& track, double x, double y, double angle, double limit) {
    if (limit < PROBE_STEP) return limit;
    Vec2 const along = direction(angle);
    for (int d = PROBE_STEP; d <= limit; d += PROBE_STEP) {
        if (!cell_is_passable(track, floor_cell(x + d * along.x), floor_cell(y + d * along.y))) {
            return d;
        }
    }
    return limit;
}

Input drive(CarState const& car, CarState const& other, Track const& track) {
    int const here = progress_at(track, car.x, car.y);
    View const view = look_ahead(track, car, here);

    double steer = view.steer;
    double bearing = 0.0;
    bool const chase = is_chasing(track, car, other, here, bearing);
    if (chase) steer = wrap_angle(0.6 * steer + 0.4 * bearing);
    double const turn_factor = chase ? 0.55 : 0.85;
    double const brake_factor = chase ? 1.2 : 1.05;

    double target = (1.0 - turn_factor * std::min(std::abs(steer), 1.0)) * TOP_SPEED;
    target = std::max(std::min(target, view.front * 0.0022), LEAST_SPEED);

    Input input;
    input.right = steer > 0.03;
    input.left = steer < -0.03;
    input.gas = car.speed < target;
    input.brake = !input.gas && car.speed > brake_factor * target;
    return input;
}
