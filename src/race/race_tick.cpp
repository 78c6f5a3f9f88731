#include "race/race_tick.h"

#include "screens/finish_sequence.h"
#include "world/car_bump.h"
#include "world/car_physics.h"
#include "world/geometry.h"
#include "world/surface.h"
#include "world/wall_bounce.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::int32_t BRAKE_LATCH_TICKS = 199; // after the tick of the press
constexpr std::uint32_t OVERLAY_MS = 1500;

// The controls that the physics gets: in a corner a tap of the brake counts as held for 200
// ticks, so that it gives a slide and not one tick of skid.
Input latched_input(Player& player) {
    Input input = player.input;
    bool const pressed = input.brake && !player.brake_was_down;
    bool const held = pressed || player.brake_latch_ticks > 0;
    if (pressed) {
        player.brake_latch_ticks = BRAKE_LATCH_TICKS;
    } else if (player.brake_latch_ticks > 0) {
        --player.brake_latch_ticks;
    }
    player.brake_was_down = player.input.brake;
    if (held && (input.left || input.right)) input.brake = true;
    return input;
}

// Appends the car to the lap's recording, once for each of `frames` ticks.
void record(RaceContext const& race, Player& player, int frames) {
    if (race.sim.countdown.active || race.arcade || !race.recorded) return;
    for (int i = 0; i < frames; ++i) player.trace.push_back(player.car);
}

void emit(RaceContext& race, RaceEventKind kind, Player const& player) {
    race.events.push_back({.kind = kind, .player = player.id});
}

// The recording of a best lap becomes the ghost. True if there was one.
bool keep_ghost(RaceContext const& race, Player& player, std::uint32_t lap_ms) {
    if (player.trace.empty()) return false;
    player.best_trace = std::exchange(player.trace, {});
    player.best_trace_substeps = static_cast<std::uint32_t>(race.ticks_per_step);
    player.best_trace_ms = lap_ms;
    return true;
}

// The overlay's rank is for whoever puts the lap on record.
void announce_lap(RaceContext const& race, Player& player, RaceEvent const& lap) {
    player.view.lap_overlay_until_ms = race.now + OVERLAY_MS;
    player.view.lap_overlay_time_ms = lap.time_ms;
    player.view.lap_overlay_is_best = lap.is_best;
    player.view.lap_overlay_record = 0;
}

void finish_race(RaceContext& race, Player& player, double at_ms) {
    end_race_of(player, race.now, at_ms);
    bool const is_first = race.sim.first_finish_tick == 0;
    if (is_first) {
        race.sim.first_finish_tick = race.now;
        race.sim.winner = player.id;
        finish_seq_start(race.sim.finish_seq, race.now);
    }
    race.events.push_back(
        {.kind = RaceEventKind::Finished, .player = player.id, .is_first = is_first});
}

void complete_lap(RaceContext& race, Player& player, double at_ms) {
    std::int32_t const done = ++player.view.laps_done;
    RaceEvent lap{.kind = RaceEventKind::Lap, .player = player.id, .number = done};
    lap.time_ms = static_cast<std::uint32_t>(std::lround(at_ms - player.lap_start_ms));
    lap.is_best = player.view.best_lap_ms == 0 || lap.time_ms < player.view.best_lap_ms;
    bool const finishing =
        race.sim.laps > 0 && (done >= race.sim.laps || race.sim.first_finish_tick != 0);
    if (race.sim.laps > 0 && done == race.sim.laps - 1) player.view.last_lap_flash_ms = race.now;
    if (!finishing) player.lap_start_ms = at_ms; // else the clock holds the last lap
    if (lap.is_best) {
        player.view.best_lap_ms = lap.time_ms;
        lap.has_ghost = keep_ghost(race, player, lap.time_ms);
    }
    player.trace.clear();
    announce_lap(race, player, lap);
    race.events.push_back(lap);
    if (finishing) finish_race(race, player, at_ms);
}

void cross_backward(RaceContext& race, Player& player) {
    if (player.wrong_way) return;
    player.wrong_way = true;
    emit(race, RaceEventKind::WrongWay, player);
}

void cross_forward(RaceContext& race, Player& player, int tick) {
    if (player.view.finished_ms != 0) return;
    double const at_ms = static_cast<double>(race.sim.sim_time_ms) +
                         (tick + 1) * static_cast<double>(STEP_MS) / race.ticks_per_step;
    if (player.waiting_for_line) {
        start_clocks(player, at_ms);
        player.waiting_for_line = false;
        player.trace.clear();
        emit(race, RaceEventKind::ClockStarted, player);
    } else if (player.wrong_way) {
        player.wrong_way = false;
        emit(race, RaceEventKind::BackAcross, player);
    } else {
        complete_lap(race, player, at_ms);
    }
}

// Which side of the line through `from` and `to` a point lies on.
bool left_of(Vec2 from, Vec2 to, Vec2 point) {
    return cross(to - from, point - from) < 0.0;
}

// Both cars tick by tick together, with a bump after each pair of ticks.
void run_ticks_together(RaceContext& race) {
    Simulation& sim = race.sim;
    bool red_stopped = false;
    bool blue_stopped = false;
    for (int i = 0; i < race.ticks_per_step; ++i) {
        if (!red_stopped) red_stopped = race_tick(race, sim.p1, i);
        if (!blue_stopped) blue_stopped = race_tick(race, sim.p2, i);
        Bump const bump = bump_cars(sim.p1.car, sim.p2.car, race.track);
        if (bump.loudness == 0.0F) continue;
        race.events.push_back({.kind = RaceEventKind::Bump, .loudness = bump.loudness});
    }
}

// One car's ticks by themselves.
void run_ticks(RaceContext& race, Player& player) {
    for (int i = 0; i < race.ticks_per_step; ++i) {
        if (race_tick(race, player, i)) return;
    }
}

} // namespace

int ticks_per_step() {
    return std::max(static_cast<int>(SIM_SPEED), 1);
}

bool race_tick(RaceContext& race, Player& player, int i) {
    CarState const before = player.car;
    SurfaceEffect const surface = sample_surface(race.track, player.car, player.surface_rumble);
    physics_step_cartest(player.car, latched_input(player), surface);

    if (car_on_impassable(player.car, race.track)) {
        player.car.in_wall = true;
        float const loudness = bounce_off_wall(player.car, race.track, before);
        race.events.push_back(
            {.kind = RaceEventKind::WallHit, .player = player.id, .loudness = loudness});
        record(race, player, race.ticks_per_step - i); // a frame for each tick that will not run
        return true;
    }

    player.car.in_wall = false;
    int const crossing = check_goal_crossing(player, race.track);
    if (crossing == 2) cross_backward(race, player);
    if (crossing == 1) cross_forward(race, player, i);
    record(race, player, 1);
    return false;
}

void race_step(RaceContext& race) {
    Simulation& sim = race.sim;
    sim.p1.prev_car = sim.p1.car;
    sim.p2.prev_car = sim.p2.car;
    if (race.arcade) {
        run_ticks_together(race);
    } else {
        run_ticks(race, sim.p1);
        run_ticks(race, sim.p2);
    }
    sim.postTick(race.now);
    sim.sim_time_ms += STEP_MS;
}

int check_goal_crossing(Player& player, Track const& track) {
    Vec2 const a{track.goal_x1 + 0.5, track.goal_y1 + 0.5};
    Vec2 const b{track.goal_x2 + 0.5, track.goal_y2 + 0.5};
    Vec2 const from{player.goal_prev_x, player.goal_prev_y};
    Vec2 const to{player.car.x, player.car.y};
    bool const had_from = player.goal_prev_valid;
    player.goal_prev_x = to.x;
    player.goal_prev_y = to.y;
    player.goal_prev_valid = true;

    bool const side = left_of(a, b, to);
    if (!had_from || left_of(a, b, from) == side) return 0;
    if (left_of(from, to, a) == left_of(from, to, b)) return 0; // past the line's ends
    Vec2 const start{track.start_x + 0.5, track.start_y + 0.5};
    return left_of(a, b, start) == side ? 1 : 2;
}
