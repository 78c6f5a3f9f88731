#include "race/ghost_gap.h"

#include "race/simulation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr double SPACING = 0.5; // cells between places
constexpr int REACH = 80;       // steps before and behind the car in which the ghost is looked for
constexpr int LONGEST_MOVE = 200; // steps a frame; more is no motion, nor is a quarter of a lap
constexpr int JUMPS_BELIEVED = 30;
constexpr std::uint32_t GAP_HOLDS_MS = 200;

// -1 off the lap, and on the line, which is its beginning as well as its end.
std::int32_t steps_at(Track const& track, double x, double y) {
    Cell const cell = cell_at(x, y);
    if (!track.contains(cell.column, cell.row)) return -1;
    std::int32_t const steps = track.start_distance[track.index(cell.column, cell.row)];
    return steps > track.start_distance_max ? -1 : steps;
}

void collect_places(GhostIndex& index, Track const& track, std::vector<CarState> const& frames,
                    double frame_ms) {
    std::int32_t steps = 0;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        CarState const& car = frames[i];
        if (!std::isfinite(car.x) || !std::isfinite(car.y)) continue;
        bool const moved =
            index.places.empty() ||
            std::hypot(car.x - index.places.back().x, car.y - index.places.back().y) >= SPACING;
        if (!moved && i + 1 != frames.size()) continue;
        std::int32_t const here = steps_at(track, car.x, car.y);
        // The lap begins where the flood from the start cell ends: that end is not yet reached.
        bool const before_start = steps == 0 && here > track.start_distance_max / 2;
        if (here >= 0 && !before_start) steps = here;
        index.places.push_back({car.x, car.y, static_cast<double>(i) * frame_ms, steps});
    }
}

void note_reached(GhostIndex& index, Track const& track) {
    index.reached.clear();
    index.reached.reserve(static_cast<std::size_t>(track.start_distance_max) + 2);
    for (std::size_t i = 0; i < index.places.size(); ++i) {
        auto const steps = static_cast<std::size_t>(index.places[i].steps);
        while (index.reached.size() <= steps) {
            index.reached.push_back(static_cast<std::uint32_t>(i));
        }
    }
}

double length_between(GhostPlace const& a, GhostPlace const& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

void note_quarters(GhostIndex& index) {
    double whole = 0.0;
    for (std::size_t i = 1; i < index.places.size(); ++i) {
        whole += length_between(index.places[i - 1], index.places[i]);
    }
    double so_far = 0.0;
    std::size_t quarter = 0;
    for (std::size_t i = 1; i < index.places.size() && quarter < index.quarters.size(); ++i) {
        so_far += length_between(index.places[i - 1], index.places[i]);
        if (so_far < whole * static_cast<double>(quarter + 1) / 4.0) continue;
        index.quarters.at(quarter) = index.places[i].ms;
        ++quarter;
    }
}

// The index of the first place that is at least `steps` round the lap.
std::size_t first_at(GhostIndex const& index, std::int32_t steps) {
    if (steps <= 0) return 0;
    auto const at = static_cast<std::size_t>(steps);
    return at < index.reached.size() ? index.reached[at] : index.places.size();
}

// Places that are further round the lap than they are away lie behind a wall.
bool on_this_side(GhostPlace const& place, double x, double y, std::int32_t steps) {
    double const away = std::max(std::abs(place.x - x), std::abs(place.y - y));
    return std::abs(place.steps - steps) <= away + 2.0;
}

struct Projection {
    double distance;
    double ms;
};

Projection project(GhostPlace const& a, GhostPlace const& b, double x, double y) {
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const square = dx * dx + dy * dy;
    double const along = square > 0.0 ? ((x - a.x) * dx + (y - a.y) * dy) / square : 0.0;
    double const t = std::clamp(along, 0.0, 1.0);
    return {std::hypot(a.x + dx * t - x, a.y + dy * t - y), a.ms + (b.ms - a.ms) * t};
}

// The splits of the quarters that lie between the last place of the car and this one. Within a
// frame the car's time is taken to run evenly along the ghost's.
void pass_quarters(GhostGap& gap, double ghost_ms, double lap_ms, std::uint32_t now) {
    auto const passed = [&gap](double ms) {
        return gap.next_quarter < 3 &&
               ms >= gap.index.quarters.at(static_cast<std::size_t>(gap.next_quarter));
    };
    while (passed(ghost_ms)) {
        double const mark = gap.index.quarters.at(static_cast<std::size_t>(gap.next_quarter));
        ++gap.next_quarter;
        if (gap.steps < 0 || mark < gap.ghost_ms) continue; // the ghost came later than the car
        double const share = (mark - gap.ghost_ms) / (ghost_ms - gap.ghost_ms);
        gap.split_ms = gap.lap_ms + (lap_ms - gap.lap_ms) * share - mark;
        gap.split_quarter = gap.next_quarter;
        gap.split_tick = now;
    }
}

// Whether the car can have come there since the last frame; after a while it must be believed.
bool believed(GhostGap& gap, Track const& track, std::int32_t steps) {
    if (steps < 0) return false;
    int const longest = std::min(LONGEST_MOVE, track.start_distance_max / 4);
    bool const near = gap.steps < 0 || std::abs(steps - gap.steps) <= longest;
    gap.jumps = near ? 0 : gap.jumps + 1;
    return near || gap.jumps >= JUMPS_BELIEVED;
}

} // namespace

void set_ghost(GhostGap& gap, Track const& track, std::vector<CarState> const& frames,
               unsigned ticks_per_step) {
    GhostIndex& index = gap.index;
    double const frame_ms = static_cast<double>(STEP_MS) / std::max(ticks_per_step, 1U);
    index.places.clear();
    index.lap_ms = static_cast<double>(frames.size()) * frame_ms;
    collect_places(index, track, frames, frame_ms);
    note_reached(index, track);
    note_quarters(index);
    gap.steps = -1;
    gap.shows = false;
    gap.next_quarter = 0;
}

double ghost_time_at(GhostIndex const& index, double x, double y, std::int32_t steps) {
    std::size_t const end = first_at(index, steps + REACH);
    std::size_t nearest = end;
    double least = 0.0;
    for (std::size_t i = first_at(index, steps - REACH); i < end; ++i) {
        GhostPlace const& place = index.places[i];
        if (!on_this_side(place, x, y, steps)) continue;
        double const dx = place.x - x;
        double const dy = place.y - y;
        double const square = dx * dx + dy * dy;
        if (nearest != end && square >= least) continue;
        nearest = i;
        least = square;
    }
    if (nearest == end) return -1.0;
    Projection best{std::sqrt(least), index.places[nearest].ms};
    for (std::size_t i = std::max<std::size_t>(nearest, 1);
         i <= nearest + 1 && i < index.places.size(); ++i) {
        Projection const found = project(index.places[i - 1], index.places[i], x, y);
        if (found.distance < best.distance) best = found;
    }
    return best.ms;
}

void start_gap(GhostGap& gap) {
    gap.steps = 0;
    gap.ghost_ms = gap.lap_ms = 0.0;
    gap.jumps = gap.next_quarter = 0;
    gap.shows = false;
}

void update_gap(GhostGap& gap, Track const& track, CarState const& car, double lap_ms,
                std::uint32_t now) {
    std::int32_t const steps = steps_at(track, car.x, car.y);
    double const there =
        believed(gap, track, steps) ? ghost_time_at(gap.index, car.x, car.y, steps) : -1.0;
    if (there >= 0.0) {
        pass_quarters(gap, there, lap_ms, now);
        gap.steps = steps;
        gap.ghost_ms = there;
    }
    gap.lap_ms = lap_ms;
    if (gap.steps < 0 || (gap.shows && now - gap.gap_tick < GAP_HOLDS_MS)) return;
    gap.shows = true;
    gap.gap_tick = now;
    gap.gap_ms = lap_ms - gap.ghost_ms;
}

void end_gap(GhostGap& gap, double lap_ms, std::uint32_t now) {
    if (gap.index.places.empty()) return;
    gap.split_ms = lap_ms - gap.index.lap_ms;
    gap.split_quarter = 4;
    gap.split_tick = now;
}
