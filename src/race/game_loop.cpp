#include "race/game_loop.h"

#include "audio/audio.h"
#include "input/controls.h"
#include "platform/mouse.h"
#include "platform/present.h"
#include "race/race_picture.h"
#include "race/race_report.h"
#include "race/race_rules.h"
#include "race/race_tick.h"
#include "records/replace_file.h"
#include "render/camera.h"
#include "render/text.h"
#include "render/track_view.h"
#include "screens/finish_sequence.h"
#include "world/ai_driver.h"
#include "world/geometry.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

// Real time becomes simulated time here, and only here: every frame adds its length to `acc_ms`
// and steps of 10 ms are taken off it. What is left over is the fraction by which the picture is
// interpolated between the last two steps. All that is raced or recorded runs on the simulated
// clock; SDL_GetTicks runs effects only.

namespace {

constexpr std::uint32_t MAX_FRAME_MS = 200; // at most 20 steps a frame; the rest of a stall is lost
constexpr std::uint32_t TROUBLE_SHOWS_MS = 3000;

// The length of this frame in milliseconds, added to what is yet to be simulated.
std::uint32_t take_real_time(GameLoop& g) {
    std::uint32_t const now = SDL_GetTicks();
    std::uint32_t const dt = now - g.last_ticks;
    g.acc_ms += dt;
    g.last_ticks = now;
    if (dt != 0) {
        double const rate = 1000.0 / dt;
        g.fps = g.fps == 0.0 ? rate : 0.9 * g.fps + 0.1 * rate;
    }
    return dt;
}

void read_controls(GameLoop& g) {
    std::uint8_t const* keys = SDL_GetKeyboardState(nullptr);
    Player& red = g.sim.p1;
    Player& blue = g.sim.p2;
    if (g.sim.game_over) {
        red.input = {};
        blue.input = {};
        return;
    }
    update_input(red, keys, g.pressed_keys.data(), g.keys[0]);
    update_input(blue, keys, g.pressed_keys.data(), g.keys[1]);
    for (Gamepad& pad : g.gamepads) pad.poll();
    apply_gamepad(g.gamepads[0], red.input, red.swap_when_reversing, red.car.throttle < 0.0);
    apply_gamepad(g.gamepads[1], blue.input, blue.swap_when_reversing, blue.car.throttle < 0.0);
    for (Player* player : {&red, &blue}) {
        g.pads.apply(player->id, player->input, player->swap_when_reversing,
                     player->car.throttle < 0.0);
    }
    if (g.ai_red) red.input = ai_drive(red, blue, g.track);
    if (g.ai_blue) blue.input = ai_drive(blue, red, g.track);
}

// What has happened is told at once, so that a sound or a record is never a frame late.
void report(GameLoop& g, std::uint32_t now) {
    ReportContext context{.sim = g.sim,
                          .audio = g.audio,
                          .track_path = g.track_path,
                          .track_slot = g.track_slot,
                          .recorded = is_recorded(g.switches()),
                          .trouble = {}};
    note_hits(g.rumble, g.events, now);
    report_events(context, g.events);
    note_events(g.notices, g.sim, g.events, now);
    g.events.clear();
    if (!context.trouble.empty()) g.show_toast(context.trouble.c_str(), TROUBLE_SHOWS_MS);
}

void run_rules(GameLoop& g, std::uint32_t now) {
    run_countdown(g.sim, now, g.events);
    if (start_music_after_go(g.sim, now)) g.apply_music();
    stop_who_is_out_of_time(g.sim, now, g.events);
    report(g, now);
}

void run_steps(GameLoop& g, std::uint32_t now) {
    RaceContext race{.sim = g.sim,
                     .track = g.track,
                     .events = g.events,
                     .now = std::max(now, 1U),
                     .arcade = g.arcade,
                     .ticks_per_step = ticks_per_step(),
                     .recorded = is_recorded(g.switches())};
    g.acc_ms = std::min(g.acc_ms, MAX_FRAME_MS);
    while (g.acc_ms >= STEP_MS) {
        g.acc_ms -= STEP_MS;
        race_step(race);
        report(g, now);
    }
}

// The car as drawn: between the last two steps, turned the short way round.
CarState interpolated(Player const& player, double alpha) {
    CarState car = player.car;
    CarState const& from = player.prev_car;
    car.x = from.x + (player.car.x - from.x) * alpha;
    car.y = from.y + (player.car.y - from.y) * alpha;
    car.heading = from.heading + wrap_angle(player.car.heading - from.heading) * alpha;
    return car;
}

void follow_cars(GameLoop& g, RacePicture const& picture, std::uint32_t dt) {
    double const scale = world_scale();
    auto follow = [&](PlayerView& view, CarState const& car) {
        double const w = scale > 0.0 ? view.viewport.w / scale : 0.0;
        double const h = scale > 0.0 ? view.viewport.h / scale : 0.0;
        update_camera(view, car, g.track, dt * 0.001, w, h);
    };
    follow(g.sim.p1.view, picture.red);
    follow(g.sim.p2.view, picture.blue);
}

// A finished car fades from sight and from hearing; one without a view is silent.
void fade_finished_cars(GameLoop& g, std::uint32_t now) {
    for (Player* player : {&g.sim.p1, &g.sim.p2}) {
        float const level = presence(player->view, now);
        if (player->view.finished_ms != 0) {
            player->view.car_alpha = static_cast<std::uint8_t>(std::lroundf(255.0F * level));
        }
        bool const has_view = g.view_mode == 0 || g.view_mode == player->id;
        auto const index = static_cast<std::size_t>(player->id - 1);
        g.audio.car_feed.at(index).volume = has_view ? level : 0.0F;
    }
}

void feed_engine_sounds(GameLoop& g) {
    for (Player const* player : {&g.sim.p1, &g.sim.p2}) {
        CarFeed& feed = g.audio.car_feed.at(static_cast<std::size_t>(player->id - 1));
        feed.speed = static_cast<float>(player->car.throttle);
        feed.skidding = player->car.skidding;
        feed.gas = player->input.gas;
        feed.rumble = player->surface_rumble;
    }
}

// Once the picture of game over stands still, records are made sure of, with one wait for the disk
// in a frame.
void flush_at_rest(GameLoop& g, std::uint32_t now) {
    if (!g.records_wait || now - g.sim.game_over_tick <= GAME_OVER_FADE_MS) return;
    g.records_wait = flush_a_step();
}

} // namespace

GameLoop::GameLoop(SDL_Window* window_, SDL_Renderer* renderer_, Audio& audio_, Fonts const& fonts_,
                   bool fast, bool arcade_, bool ai, bool ai2, bool menu, bool help_screen,
                   int track_number, int race_laps)
    : window(window_), renderer(renderer_), audio(audio_), fonts(fonts_),
      arcade(arcade_ || ai || ai2), ai_red(ai || ai2), ai_blue(ai2), opt_fast(fast),
      opt_quick(arcade_ || ai || ai2), opt_menu(menu), opt_help_screen(help_screen),
      opt_track(track_number), opt_race_laps(race_laps),
      phys_scale(fonts_.phys_scale > 0.0 ? fonts_.phys_scale : 1.0) {}

void GameLoop::run() {
    initial_setup();
    put_mouse_aside_for_race();
    last_ticks = SDL_GetTicks();
    acc_ms = 0;
    while (running) frame();
    SDL_SetRelativeMouseMode(SDL_FALSE);
}

void GameLoop::frame() {
    std::uint32_t const dt = take_real_time(*this);
    phys_scale = text_scale(fonts); // the window may have been resized
    poll_events();

    std::uint32_t const t1 = SDL_GetTicks();
    run_rules(*this, t1);
    read_controls(*this);
    hold_clocks(sim);
    run_steps(*this, t1);

    std::uint32_t const t2 = SDL_GetTicks();
    double const alpha = std::min(acc_ms / static_cast<double>(STEP_MS), 1.0);
    RacePicture const picture{.red = interpolated(sim.p1, alpha),
                              .blue = interpolated(sim.p2, alpha),
                              .alpha = alpha,
                              .input_tick = t1,
                              .draw_tick = t2};
    follow_cars(*this, picture, dt);
    fade_finished_cars(*this, t2);
    if (race_is_over(sim, t2)) enter_game_over(t2);
    finish_seq_update(sim.finish_seq, audio, t2);
    feed_engine_sounds(*this);
    update_gaps(notices, sim, picture.red, picture.blue, alpha, t2);
    place_warnings(notices, fonts, sim, picture.red, picture.blue, t2);
    feel_race(rumble, sim, pads, {ai_red, ai_blue}, t2);
    draw_race(*this, picture);
    present_frame(renderer);
    audio.decode_ahead();
    flush_at_rest(*this, t2);
}
