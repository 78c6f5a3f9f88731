#include "audio/audio.h"
#include "base/own_place.h"
#include "base/screen.h"
#include "base/texts.h"
#include "input/input_conf.h"
#include "platform/mouse.h"
#include "platform/shipped_file.h"
#include "race/game_loop.h"
#include "records/best_laps.h"
#include "records/ghost_sprite.h"
#include "records/ghost_trace.h"
#include "records/printed.h"
#include "records/replace_file.h"
#include "render/car_sprite.h"
#include "render/image.h"
#include "render/track_view.h"
#include "render/view_settings.h"
#include "screens/finish_sequence.h"
#include "screens/intro_screen.h"
#include "screens/menu_loop.h"
#include "world/track_file.h"

#include <SDL.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr std::uint32_t FAILURE_SHOWS_MS = 4000; // loading and the fade from black are part of it

// What a menu hands back.
struct MenuChoice {
    int mode = 0; // 0 practice, 1 race
    int laps = 3;
    int track = 0;
    bool started = false;
};

bool run_menu(GameLoop& g, MenuChoice& choice, bool load_music, bool open_help) {
    RaceSwitches switches = g.switches();
    bool const started = run_menu_screen(g.window, g.renderer, g.audio, g.fullscreen, load_music,
                                         &choice.mode, &choice.laps, &choice.track, &choice.started,
                                         &g.sim.p1.name, &g.sim.p2.name, open_help,
                                         {.pads = &g.pads,
                                          .switches = &switches,
                                          .keys = &g.keys,
                                          .failed_track = g.failed_track,
                                          .title = &g.menu_title});
    g.arcade = switches.bumps;
    g.ai_red = switches.computer_red;
    g.ai_blue = switches.computer_blue;
    // Who drives stands in place of the name; nothing is recorded under it.
    if (g.ai_red) g.sim.p1.name = texts::COMPUTER;
    if (g.ai_blue) g.sim.p2.name = texts::COMPUTER;
    return started;
}

// A track that fails to load leaves the old one in place, and is named.
bool load_or_tell(GameLoop& g, std::string const& path) {
    if (g.load_into(path)) return true;
    g.failed_track = track_name_from_path(path);
    std::string const words = printed(texts::NAMED_TRACK_FAILED, g.failed_track.c_str());
    g.show_toast(words.c_str(), FAILURE_SHOWS_MS);
    return false;
}

void apply_choice(GameLoop& g, MenuChoice const& choice) {
    g.sim.flying_start = choice.mode == 0;
    g.sim.practice = choice.mode == 0;
    g.sim.laps = choice.mode == 1 ? choice.laps : 0;
    g.failed_track.clear();
    if (choice.track < 1 || choice.track > 9) return;
    std::string const path = g.track_files.at(static_cast<std::size_t>(choice.track));
    if (!path.empty() && path != g.track_path) load_or_tell(g, path);
}

// The drawing scale of a new track, before its texture has been tried.
void set_scale_for(GameLoop const& g, Track const& track) {
    PIXELS_PER_CELL = drawing_scale(pixels_per_cell_for(track, g.renderer));
    ZOOM_LEVEL = 0;
}

void use_default_track(GameLoop& g) {
    g.track = make_default_track();
    set_scale_for(g, g.track);
    g.raster_tex = render_build_track_texture(g.renderer, g.track, &g.raster_w, &g.raster_h);
    g.show_image = false;
    g.refresh_track_tex();
}

void load_first_track(GameLoop& g) {
    if (g.opt_track != 0) {
        std::string const wanted = g.track_files.at(static_cast<std::size_t>(g.opt_track));
        if (!wanted.empty() && load_or_tell(g, wanted)) return;
        std::fprintf(stderr, "track %d not found, picking default\n", g.opt_track);
    }
    for (std::string const& path : g.track_files) {
        if (!path.empty() && load_or_tell(g, path)) return;
    }
    use_default_track(g);
}

struct CarArt {
    char const* file;
    char const* label; // what a missing file is called on standard error
    SDL_Color body;
    SDL_Color accent;
    SDL_Color ghost_outline;
};

void load_car(GameLoop const& g, Player& player, int id, CarArt const& art) {
    player.id = id;
    player.view.body_color = art.body;
    player.view.accent_color = art.accent;
    player.view.car_texture = load_car_texture(g.renderer, art.file);
    if (!player.view.car_texture) {
        std::fprintf(stderr, "car art %s: %s\n", art.label, SDL_GetError());
    }
    player.view.ghost_texture = ghost_make_texture(g.renderer, art.file, art.ghost_outline);
}

void load_cars(GameLoop& g) {
    load_car(g, g.sim.p1, 1,
             {"art/red4.png", "red2", {220, 70, 70, 255}, {255, 200, 80, 255}, GHOST_OUTLINE_RED});
    load_car(
        g, g.sim.p2, 2,
        {"art/blue4.png", "blue2", {80, 130, 230, 255}, {200, 230, 255, 255}, GHOST_OUTLINE_BLUE});
}

void open_gamepads(GameLoop& g) {
    GamepadConfig red;
    GamepadConfig blue;
    std::string const conf = own_or_here("input.conf");
    g.keys = load_own_keys(conf);
    bool const has_file = load_input_conf(conf, red, blue);
    if (red.device.empty() && blue.device.empty()) g.pads.start();
    if (!has_file) return;
    open_gamepad(g.gamepads[0], red);
    open_gamepad(g.gamepads[1], blue);
}

void set_quick_mode(GameLoop& g) {
    bool const race = g.opt_race_laps > 0;
    g.sim.flying_start = !race;
    g.sim.practice = !race;
    g.sim.laps = race ? g.opt_race_laps : 0;
}

// Intro and menu, as far as the command line wants them; a quick start asks nobody.
void choose_mode(GameLoop& g) {
    bool const menu_first = g.opt_menu || g.opt_help_screen;
    if (!menu_first && (g.opt_fast || g.opt_quick)) return set_quick_mode(g);

    MenuChoice choice;
    if (menu_first) {
        g.running = run_menu(g, choice, true, g.opt_help_screen);
    } else {
        g.running =
            run_intro_screen(g.window, g.renderer, g.audio, g.fonts, g.fullscreen, &g.pads) &&
            run_menu(g, choice, false, false);
    }
    g.fade_in_pending = choice.started;
    apply_choice(g, choice);
}

// The last steps into a fresh race: records cleared, clocks started, picture faded in after a
// menu's launch. Time spent before does not fall on the simulation.
void start_race(GameLoop& g, bool fade_in) {
    g.restart_race(true, false);
    g.acc_ms = 0;
    g.last_ticks = SDL_GetTicks();
    g.fade_in_tick = fade_in ? SDL_GetTicks() : 0;
    put_mouse_aside_for_race();
}

void load_saved_ghost(Player& player, int track_slot) {
    player.disk_trace.clear();
    player.disk_trace_substeps = 1;
    if (player.name.empty() || track_slot <= 0) return;
    std::string const file = best_lap_trace(player.name, track_slot);
    if (file.empty()) return;
    unsigned substeps = 1;
    load_ghost_trace(pref_path(file.c_str()), player.disk_trace, &substeps);
    player.disk_trace_substeps = substeps;
}

} // namespace

void GameLoop::initial_setup() {
    fullscreen =
        window == nullptr || (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
    track_files = discover_tracks();
    picture_waits = true; // nothing shows it before the race, and the menu may change the track
    load_first_track(*this);
    load_cars(*this);
    apply_viewports();
    open_gamepads(*this);
    choose_mode(*this);
    if (!running) audio.hush(); // what follows is the start of a race that nobody will see
    if (picture_waits && running) load_picture_of_track();

    reset_players();
    audio.car_sound_active = true;
    std::srand(SDL_GetTicks() ^ 0x9e3779b9U);
    music_index = -1;
    next_music_index = 0;
    audio.music_volume = std::clamp(music_volume, 0.0F, 1.0F);
    finish_seq_load(audio);
    silence_race_music();
    start_race(*this, fade_in_pending);
}

void GameLoop::go_to_menu() {
    audio.car_sound_active = false;
    pads.silence();
    finish_seq_stop(sim.finish_seq, audio);
    MenuChoice choice;
    if (!run_menu(*this, choice, true, false)) {
        running = false;
        audio.hush();
        return;
    }
    put_mouse_aside_for_race();
    apply_choice(*this, choice);
    audio.car_sound_active = true;
    silence_race_music();
    reset_players();
    start_race(*this, choice.started);
}

bool GameLoop::load_into(std::string const& path) {
    Track loaded;
    ShippedFile const grid(path);
    if (!grid.at_hand() || !load_track(path, loaded)) return false;
    std::swap(track, loaded); // `loaded` keeps the old track until the new one can be shown
    set_scale_for(*this, track);

    image_tex.reset();
    show_image = false;
    if (!rebuild_track_texture()) {
        picture_waits = false;
        std::swap(track, loaded);
        refresh_track_tex();
        return false;
    }
    track_path = path;
    if (!picture_waits) load_picture_of_track();

    auto const slot = std::find(track_files.begin() + 1, track_files.end(), path);
    track_slot = slot == track_files.end() ? 0 : static_cast<int>(slot - track_files.begin());
    return true;
}

void GameLoop::load_picture_of_track() {
    picture_waits = false;
    image_tex.reset(); // before the next is loaded: either may fill 90 MB
    if (!track_path.empty()) {
        std::string const path = picture_of_track(track_path);
        ShippedFile const picture(path);
        if (picture.at_hand()) image_tex = load_texture(renderer, path.c_str(), &image_w, &image_h);
    }
    if (image_tex) SDL_SetTextureScaleMode(image_tex.get(), SDL_ScaleModeLinear);
    show_image = image_tex != nullptr;
    refresh_track_tex();
}

bool GameLoop::rebuild_track_texture() {
    // A renderer limits the size of a texture: a huge track falls back to a coarser drawing.
    for (int scale = std::max(PIXELS_PER_CELL, 1); scale >= 1; scale /= 2) {
        PIXELS_PER_CELL = scale;
        int w = 0;
        int h = 0;
        TextureHandle built = render_build_track_texture(renderer, track, &w, &h);
        if (!built) continue;
        raster_tex = std::move(built);
        raster_w = w;
        raster_h = h;
        refresh_track_tex();
        return true;
    }
    return false;
}

void GameLoop::refresh_track_tex() {
    bool const image = show_image && image_tex != nullptr;
    shown_tex = image ? image_tex.get() : raster_tex.get();
    shown_w = image ? image_w : raster_w;
    shown_h = image ? image_h : raster_h;
}

void GameLoop::apply_viewports() {
    SDL_Rect const none{0, 0, 0, 0};
    SDL_Rect const whole{0, 0, SCREEN_W, SCREEN_H};
    SDL_Rect const left{0, 0, HALF_SCREEN_W, SCREEN_H};
    SDL_Rect const right{HALF_SCREEN_W, 0, HALF_SCREEN_W, SCREEN_H};
    sim.p1.view.viewport = view_mode == 0 ? left : view_mode == 1 ? whole : none;
    sim.p2.view.viewport = view_mode == 0 ? right : view_mode == 2 ? whole : none;
}

void GameLoop::reset_players() {
    line_up_players(sim, track);
    note_starts(notices, sim);
    load_saved_ghost(sim.p1, track_slot);
    load_saved_ghost(sim.p2, track_slot);
}

void GameLoop::clear_records() {
    for (Player* player : {&sim.p1, &sim.p2}) {
        player->best_trace.clear();
        player->best_trace_ms = 0;
        player->view.best_lap_ms = 0;
    }
    note_ghosts(notices, sim);
}

void GameLoop::restart_race(bool clear, bool keep_music) {
    records_wait = false;
    if (!keep_music) flush_replaced_files(); // nobody drives now, and there may be a song to load
    sim.restart(
        clear, keep_music, track, audio, music_volume, [this] { apply_music(); },
        [this] { return pick_race_music(); }, [this] { clear_records(); }, sim.flying_start,
        sim.practice, sim.laps);
    expect_music();
    // Only now: loading a song may have taken a while, and the beeps start from this moment.
    if (!sim.practice) start_countdown(sim.countdown, SDL_GetTicks());
    start_notices(notices, SDL_GetTicks());
}

void GameLoop::enter_game_over(std::uint32_t now) {
    sim.beginGameOver(now);
    rematch_focused = false;
    records_wait = true;
    start_game_over_music();
}
