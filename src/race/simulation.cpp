#include "race/simulation.h"

#include "audio/music_fade.h"
#include "render/skid_trail.h"
#include "screens/finish_sequence.h"
#include "world/geometry.h"
#include "world/wall_contact.h"

#include <algorithm>

namespace {

constexpr double GRID_SPACING = 8.0;   // drawn pixels from the start cell's centre to a car
constexpr double RUN_UP_STEP = 0.1;    // cells
constexpr double RUN_UP_MAX = 200.0;   // cells
constexpr double RUN_UP_MARGIN = 0.4;  // cells kept between a car and where the road ends
constexpr double AWAY_DISTANCE = 0.05; // cells a step: a car under gas that moves less is stuck
constexpr std::int32_t STUCK_STEPS = 12;
constexpr unsigned FANFARE_FADE_MS = 400;

bool on_road(Track const& track, Vec2 at) {
    Cell const cell = cell_at(at.x, at.y);
    return track.contains(cell.column, cell.row) &&
           cell_is_road(track.cells[track.index(cell.column, cell.row)]);
}

// How far two cars can go back along `forward` before one of them leaves the road.
double run_up(CarState const& first, CarState const& second, Vec2 forward, Track const& track) {
    double distance = 0.0;
    while (distance < RUN_UP_MAX) {
        double const further = distance + RUN_UP_STEP;
        Vec2 const back = further * forward;
        if (!on_road(track, Vec2{first.x, first.y} - back)) break;
        if (!on_road(track, Vec2{second.x, second.y} - back)) break;
        distance = further;
    }
    return std::max(distance - RUN_UP_MARGIN, 0.0);
}

void line_up_behind_goal(Player& player) {
    player.prev_car = player.car;
    player.goal_prev_x = player.car.x;
    player.goal_prev_y = player.car.y;
    player.goal_prev_valid = true;
    player.waiting_for_line = true;
}

} // namespace

void place_car_at_start(CarState& car, Track const& track, int side) {
    double const offset = side * GRID_SPACING / PIXELS_PER_CELL;
    Vec2 const forward = direction(track.start_angle);
    car = CarState{};
    car.x = track.start_x + 0.5 - forward.y * offset;
    car.y = track.start_y + 0.5 + forward.x * offset;
    car.heading = track.start_angle;
    car.travel_dir = track.start_angle;
}

void place_cars_flying_start(CarState& first, CarState& second, Track const& track) {
    Vec2 const forward = direction(track.start_angle);
    Vec2 const back = run_up(first, second, forward, track) * forward;
    for (CarState* car : {&first, &second}) {
        car->x -= back.x;
        car->y -= back.y;
    }
}

void reset_player(Player& player, Track const& track, int side) {
    place_car_at_start(player.car, track, side);
    player.prev_car = player.car;
    player.goal_prev_x = player.car.x;
    player.goal_prev_y = player.car.y;
    player.goal_prev_valid = true;
    player.input = {};
    player.wrong_way = false;
    player.waiting_for_line = false;
    player.trace.clear();

    PlayerView& view = player.view;
    view.laps_done = 0;
    view.last_lap_flash_ms = 0;
    view.finished_ms = 0;
    view.car_alpha = 255;
    view.skid_points.clear();
    view.skid_active = false;
    view.cam_ready = false;
}

void line_up_players(Simulation& sim, Track const& track) {
    reset_player(sim.p1, track, -1);
    reset_player(sim.p2, track, 1);
    for (Player* player : {&sim.p1, &sim.p2}) {
        start_clocks(*player, static_cast<double>(sim.sim_time_ms));
        player->finish_ms = 0.0;
    }
    if (!sim.flying_start) return;
    place_cars_flying_start(sim.p1.car, sim.p2.car, track);
    line_up_behind_goal(sim.p1);
    line_up_behind_goal(sim.p2);
}

bool has_got_away(Player const& player) {
    Vec2 const moved{player.car.x - player.prev_car.x, player.car.y - player.prev_car.y};
    return dot(moved, moved) >= AWAY_DISTANCE * AWAY_DISTANCE;
}

void post_tick(Player& player, Track const& track, std::uint32_t now) {
    if (player.input.gas && !has_got_away(player)) {
        player.stuck_ticks = std::min(player.stuck_ticks + 1, STUCK_STEPS);
        if (player.stuck_ticks == STUCK_STEPS) slide_out_of_stuck(player, track);
    } else {
        player.stuck_ticks = 0;
    }
    if (player.view.finished_ms == 0) update_skid_trail(player.view, player.car, now);
}

void start_countdown(Countdown& countdown, std::uint32_t now) {
    countdown.start_tick = now;
    countdown.step = 0;
    countdown.active = true;
}

void start_clocks(Player& player, double at_ms) {
    player.lap_start_ms = at_ms;
    player.race_start_ms = at_ms;
}

void end_race_of(Player& player, std::uint32_t now, double at_ms) {
    player.view.finished_ms = now;
    player.finish_ms = at_ms;
    player.view.skid_points.clear();
}

void Simulation::restart(bool clear, bool keep_music, Track const& new_track, Audio& audio,
                         float music_volume, std::function<void()> const& apply_music,
                         std::function<char const*()> const& pick_music,
                         std::function<void()> const& clear_records, bool flying_start_wanted,
                         bool practice_wanted, int laps_wanted) {
    flying_start = flying_start_wanted;
    practice = practice_wanted;
    laps = laps_wanted;
    track = &new_track;
    if (clear) clear_records();

    first_finish_tick = 0;
    winner = 0;
    game_over_tick = 0;
    game_over = false;
    countdown.active = false;
    finish_seq_stop(finish_seq, audio);

    audio.car_sound_active = true;
    for (CarFeed& feed : audio.car_feed) feed.volume = 1.0F;
    audio.music_volume = std::clamp(music_volume, 0.0F, 1.0F);
    if (keep_music) return;

    apply_music();
    audio.load_music(pick_music());
    if (practice) {
        music_on = true;
        audio.music_fade_step = QUICK_FADE_STEP;
        audio.music_playing = true;
    }
}

void Simulation::postTick(std::uint32_t now) {
    if (track == nullptr) return;
    post_tick(p1, *track, now);
    post_tick(p2, *track, now);
}

void Simulation::beginGameOver(std::uint32_t now) {
    if (game_over) return;
    game_over_tick = now;
    game_over = true;
    for (Player* player : {&p1, &p2}) {
        if (player->view.finished_ms != 0) continue;
        end_race_of(*player, now, static_cast<double>(sim_time_ms));
    }
    finish_seq_game_over(finish_seq, now, FANFARE_FADE_MS);
}
