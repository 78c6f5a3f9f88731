#include "race/race_tick.h"

#include "audio/audio.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "screens/finish_sequence.h"
#include "world/arcade_bump.h"
#include "world/car_physics.h"
#include "world/geometry.h"
#include "world/surface.h"
#include "world/wall_contact.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace {

constexpr std::int32_t BRAKE_LATCH_TICKS = 199; // after the tick of the press
constexpr std::uint32_t OVERLAY_MS = 1500;
constexpr float BEST_LAP_HZ = 1320.0F;
constexpr float LAP_HZ = 880.0F;
constexpr double FADE_SPAN = 4.6; // time constants until a fade counts as done: 1 % is left

// Milliseconds of SDL's clock for effects. Never 0, since 0 means none where it is stored.
std::uint32_t effect_clock() {
    return std::max(SDL_GetTicks(), 1U);
}

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
    if (race.sim.countdown.active || race.arcade) return;
    for (int i = 0; i < frames; ++i) player.trace.push_back(player.car);
}

void start_clock(Player& player, double at_ms) {
    player.lap_start_ms = at_ms;
    player.race_start_ms = at_ms;
    player.waiting_for_line = false;
    player.trace.clear();
    std::printf("P%d flying start: clock running\n", player.id);
    std::fflush(stdout);
}

void turn_wrong_way(Player& player) {
    if (player.wrong_way) return;
    player.wrong_way = true;
    std::printf("P%d crossed goal line backwards\n", player.id);
    std::fflush(stdout);
}

void return_from_wrong_way(Player& player) {
    player.wrong_way = false;
    std::printf("P%d back across goal line (no lap counted)\n", player.id);
    std::fflush(stdout);
}

// What a completed lap amounts to.
struct Lap {
    double end_ms = 0.0; // simulated time of the crossing
    std::uint32_t time_ms = 0;
    std::uint32_t now = 0;  // effect clock
    bool is_best = false;   // of this player since the records were cleared
    bool finishing = false; // the player's race ends with it
    int rank = 0;           // 0 not in the table, 1 personal best, 2 lap record
    std::string trace_file; // empty where no records are kept
};

Lap measure_lap(RaceContext const& race, Player const& player, double at_ms) {
    Lap lap;
    lap.end_ms = at_ms;
    lap.time_ms = static_cast<std::uint32_t>(std::lround(at_ms - player.lap_start_ms));
    lap.now = effect_clock();
    lap.is_best = player.view.best_lap_ms == 0 || lap.time_ms < player.view.best_lap_ms;
    lap.finishing = race.sim.laps > 0 &&
                    (player.view.laps_done >= race.sim.laps || race.sim.first_finish_tick != 0);
    if (race.track_slot > 0 && !player.name.empty() && !race.arcade) {
        lap.trace_file = ghost_file_name(player.name, race.track_path);
    }
    return lap;
}

void enter_best_lap(RaceContext const& race, Player& player, Lap& lap) {
    if (!lap.is_best) return;
    player.view.best_lap_ms = lap.time_ms;
    if (lap.trace_file.empty()) return;
    lap.rank = record_best_lap(player.name, race.track_slot, lap.time_ms / 1000.0, lap.trace_file);
}

// The recording of a best lap becomes the ghost, and goes to disk if the lap made the table.
void keep_ghost(RaceContext const& race, Player& player, Lap const& lap) {
    if (!lap.is_best || player.trace.empty()) return;
    player.best_trace = std::exchange(player.trace, {});
    player.best_trace_substeps = static_cast<std::uint32_t>(race.ticks_per_step);
    player.best_trace_ms = lap.time_ms;
    if (lap.rank == 0) return;
    if (!save_ghost_trace(pref_path(lap.trace_file.c_str()), player.best_trace,
                          player.best_trace_substeps)) {
        return;
    }
    std::printf("P%d ghost saved: %s (%zu frames)\n", player.id, lap.trace_file.c_str(),
                player.best_trace.size());
    std::fflush(stdout);
}

void announce_lap(RaceContext const& race, Player& player, Lap const& lap) {
    player.view.lap_overlay_until_ms = lap.now + OVERLAY_MS;
    player.view.lap_overlay_time_ms = lap.time_ms;
    player.view.lap_overlay_is_best = lap.is_best;
    player.view.lap_overlay_record = lap.rank;
    race.audio.request_beep(lap.is_best ? BEST_LAP_HZ : LAP_HZ, 0.2F, 0.6F);
    std::printf("P%d lap %d: %u.%03u s%s\n", player.id, player.view.laps_done, lap.time_ms / 1000,
                lap.time_ms % 1000, lap.is_best ? "  (best)" : "");
    std::fflush(stdout);
}

void fade_race_music(Simulation& sim, Audio& audio) {
    auto const seconds = static_cast<double>(finish_seq_music_fade_s());
    double const rate = audio.sample_rate > 0 ? audio.sample_rate : 22050;
    audio.music_fade_step =
        seconds > 0.01 ? static_cast<float>(FADE_SPAN / (seconds * rate)) : 0.0015F;
    audio.music_playing = false;
    sim.music_on = false;
}

void finish_race(RaceContext const& race, Player& player, Lap const& lap) {
    player.view.finished_ms = lap.now;
    player.finish_ms = lap.end_ms;
    if (race.sim.first_finish_tick == 0) {
        race.sim.first_finish_tick = lap.now;
        race.sim.winner = player.id;
        finish_seq_start(race.sim.finish_seq, lap.now);
        fade_race_music(race.sim, race.audio);
    }
    player.view.skid_points.clear();
    std::printf("P%d finished the race\n", player.id);
    std::fflush(stdout);
}

void complete_lap(RaceContext const& race, Player& player, double at_ms) {
    ++player.view.laps_done;
    Lap lap = measure_lap(race, player, at_ms);
    if (race.sim.laps > 0 && player.view.laps_done == race.sim.laps - 1) {
        player.view.last_lap_flash_ms = lap.now;
    }
    enter_best_lap(race, player, lap);
    if (!lap.finishing) player.lap_start_ms = at_ms; // else the clock holds the last lap
    keep_ghost(race, player, lap);
    player.trace.clear();
    announce_lap(race, player, lap);
    if (lap.finishing) finish_race(race, player, lap);
}

void cross_forward(RaceContext const& race, Player& player, int tick) {
    if (player.view.finished_ms != 0) return;
    double const at_ms = static_cast<double>(race.sim.sim_time_ms) +
                         (tick + 1) * static_cast<double>(STEP_MS) / race.ticks_per_step;
    if (player.waiting_for_line) {
        start_clock(player, at_ms);
    } else if (player.wrong_way) {
        return_from_wrong_way(player);
    } else {
        complete_lap(race, player, at_ms);
    }
}

// Which side of the line through `from` and `to` a point lies on.
bool left_of(Vec2 from, Vec2 to, Vec2 point) {
    return cross(to - from, point - from) < 0.0;
}

// Both cars tick by tick together, with a bump after each pair of ticks.
void run_ticks_together(RaceContext const& race) {
    Simulation& sim = race.sim;
    bool red_stopped = false;
    bool blue_stopped = false;
    for (int i = 0; i < race.ticks_per_step; ++i) {
        if (!red_stopped) red_stopped = race_tick(race, sim.p1, i);
        if (!blue_stopped) blue_stopped = race_tick(race, sim.p2, i);
        arcade_car_bump(sim.p1.car, sim.p2.car, 0, 1, race.track, race.audio);
    }
}

// One car's ticks by themselves.
void run_ticks(RaceContext const& race, Player& player) {
    for (int i = 0; i < race.ticks_per_step; ++i) {
        if (race_tick(race, player, i)) return;
    }
}

} // namespace

int ticks_per_step() {
    return std::max(static_cast<int>(SIM_SPEED), 1);
}

bool race_tick(RaceContext const& race, Player& player, int i) {
    CarState const before = player.car;
    SurfaceEffect const surface = sample_surface(race.track, player.car, player.surface_rumble);
    physics_step_cartest(player.car, latched_input(player), surface);

    if (car_on_impassable(player.car, race.track)) {
        player.car.in_wall = true;
        handle_wall_hit_alt(player, race.track, before, race.audio, player.id - 1);
        record(race, player, race.ticks_per_step - i); // a frame for each tick that will not run
        return true;
    }

    player.car.in_wall = false;
    int const crossing = check_goal_crossing(player, race.track);
    if (crossing == 2) turn_wrong_way(player);
    if (crossing == 1) cross_forward(race, player, i);
    record(race, player, 1);
    return false;
}

void race_step(RaceContext const& race, std::uint32_t now) {
    Simulation& sim = race.sim;
    sim.p1.prev_car = sim.p1.car;
    sim.p2.prev_car = sim.p2.car;
    if (race.arcade) {
        run_ticks_together(race);
    } else {
        run_ticks(race, sim.p1);
        run_ticks(race, sim.p2);
    }
    sim.postTick(now);
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
