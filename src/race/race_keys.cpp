#include "audio/audio.h"
#include "base/say.h"
#include "base/screen.h"
#include "base/texts.h"
#include "race/game_loop.h"
#include "race/game_over_choice.h"
#include "records/printed.h"
#include "render/track_view.h"
#include "render/view_settings.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

// Every key that changes a setting says so twice: a toast for the player, a line on standard
// output for whoever follows the run from a console.

namespace {

constexpr float VOLUME_STEP = 0.05F;
constexpr std::uint32_t OSD_MS = 2000;
constexpr std::uint32_t LOSS_SHOWS_MS = 3000;

char const* on_off(bool on) {
    return on ? "on" : "off";
}

void press_escape(GameLoop& g) {
    if (g.sim.first_finish_tick == 0) {
        g.go_to_menu();
    } else {
        g.enter_game_over(SDL_GetTicks());
    }
}

void toggle_ghost(GameLoop& g) {
    g.ghost_visible = !g.ghost_visible;
    g.show_toast(g.ghost_visible ? "Ghost-Car ON" : "Ghost-Car OFF");
    say("ghost: %s\n", on_off(g.ghost_visible));
}

void load_saved_ghosts(GameLoop& g) {
    for (Player* player : {&g.sim.p1, &g.sim.p2}) {
        if (player->disk_trace.empty()) continue;
        player->best_trace = player->disk_trace;
        player->best_trace_substeps = player->disk_trace_substeps;
        player->best_trace_ms = 0;
    }
    note_ghosts(g.notices, g.sim);
    g.ghost_visible = true;
    g.show_toast("Best-Lap Ghost-Car ON");
    say("ghost: saved personal best (on)\n");
}

// Shift counts as it was at the key: a quick tap has let go of it before the frame reads its
// events.
void press_ghost_key(GameLoop& g, std::uint16_t modifiers) {
    if ((modifiers & KMOD_SHIFT) != 0) {
        load_saved_ghosts(g);
    } else {
        toggle_ghost(g);
    }
}

void toggle_car_sound(GameLoop& g) {
    g.car_sound_enabled = !g.car_sound_enabled;
    g.audio.car_sound_enabled = g.car_sound_enabled;
    g.show_toast(g.car_sound_enabled ? "Engine Sound ON" : "Engine Sound OFF");
    say("sound effects: %s\n", on_off(g.car_sound_enabled));
}

void toggle_flying_start(GameLoop& g) {
    g.sim.flying_start = !g.sim.flying_start;
    g.silence_race_music();
    g.restart_race(false, false);
    g.reset_players();
    g.show_toast(g.sim.flying_start ? texts::FLYING_START_ON : texts::FLYING_START_OFF);
    say("flying start: %s\n", on_off(g.sim.flying_start));
}

void toggle_music(GameLoop& g) {
    g.music_enabled = !g.music_enabled;
    g.apply_music();
    g.show_toast(g.music_enabled ? "Music ON" : "Music OFF");
    say("music: %s\n", on_off(g.music_enabled));
}

void next_song(GameLoop& g) {
    g.audio.load_music(g.pick_race_music());
    g.expect_music();
    g.sim.music_on = true;
    g.sim.music_start_tick = 0;
    g.apply_music();
    g.show_toast("Next Song");
    say("music: next track\n");
}

void toggle_panning(GameLoop& g) {
    smooth_camera = !smooth_camera;
    g.show_toast(smooth_camera ? "Panning Camera" : "Normal Camera");
    say("panning: %s\n", smooth_camera ? "on (smooth)" : "off (snap)");
}

void toggle_track_view(GameLoop& g) {
    if (!g.image_tex) {
        g.show_toast(texts::NO_PICTURE);
        say("track view: no .png for this track\n");
        return;
    }
    g.show_image = !g.show_image;
    g.refresh_track_tex();
    g.show_toast(g.show_image ? texts::TRACK_PICTURE : texts::TRACK_GRID);
    say("track view: %s\n", g.show_image ? "image" : "raster");
}

void press_slot(GameLoop& g, int digit) {
    std::string const path = g.track_files.at(static_cast<std::size_t>(digit));
    if (path.empty()) {
        g.show_toast(printed(texts::NO_TRACK, digit).c_str());
        say("no track in slot %d\n", digit);
        return;
    }
    bool const other_track = path != g.track_path;
    if (other_track) {
        if (!g.load_into(path)) {
            g.show_toast(printed(texts::TRACK_FAILED, digit).c_str());
            say("track %d failed to load\n", digit);
            return;
        }
        g.silence_race_music();
    }
    g.restart_race(other_track, false);
    g.reset_players();
}

void toggle_solo_view(GameLoop& g, int player) {
    g.view_mode = g.view_mode == player ? 0 : player;
    g.apply_viewports();
    g.show_toast(texts::VIEWS.at(static_cast<std::size_t>(g.view_mode)));
    if (g.view_mode == 0) {
        say("view: split\n");
    } else {
        say("view: P%d solo\n", player);
    }
}

void toggle_reverse_swap(GameLoop& g, Player& player) {
    bool const on = player.swap_when_reversing = !player.swap_when_reversing;
    if (player.id == 1) {
        g.show_toast(on ? "Red normal reverse" : "Red inverted reverse");
    } else {
        g.show_toast(on ? "Blue normal reverse" : "Blue inverted reverse");
    }
    say("P%d reverse-turn-swap: %s\n", player.id, on_off(on));
}

void toggle_gas_inversion(GameLoop& g, Player& player) {
    bool const on = player.invert_gas = !player.invert_gas;
    if (player.id == 1) {
        g.show_toast(on ? "Red inverted ACC/BRAKE" : "Red normal ACC/BRAKE");
    } else {
        g.show_toast(on ? "Blue inverted ACC/BRAKE" : "Blue normal ACC/BRAKE");
    }
    say("P%d accelerate inverted: %s\n", player.id, on_off(on));
}

void toggle_ghost_look(GameLoop& g) {
    fancy_ghost = !fancy_ghost;
    g.show_toast(fancy_ghost ? "Alternative Ghost-Car" : "Standard Ghost-Car");
    say("ghost sprite: %s\n", fancy_ghost ? "alternative" : "original");
}

void toggle_vsync(GameLoop& g) {
    g.vsync = !g.vsync;
    SDL_RenderSetVSync(g.renderer, g.vsync ? 1 : 0);
    g.osd_text = g.vsync ? "VSYNC on" : "VSYNC off";
    g.osd_until = SDL_GetTicks() + OSD_MS;
    say("vsync: %s\n", on_off(g.vsync));
}

void set_music_volume(GameLoop& g, float volume) {
    g.music_volume = std::clamp(volume, 0.0F, 1.0F);
    g.audio.music_volume = g.music_volume;
    auto const percent = static_cast<double>(g.music_volume * 100.0F);
    g.show_toast(printed(texts::VOLUME, percent).c_str());
    say("music volume: %.0f%%\n", percent);
}

// The bound is worked out for the view of this moment; a level that a change of view has left
// outside it stays until the next zoom key.
void zoom_by(GameLoop& g, int steps) {
    int const lowest = zoom_min(g.track, g.view_mode == 0 ? HALF_SCREEN_W : SCREEN_W);
    int const before = ZOOM_LEVEL;
    ZOOM_LEVEL = std::clamp(before + steps, lowest, ZOOM_MAX);
    if (ZOOM_LEVEL == before) return g.show_toast(texts::ZOOM_BOUND);
    say("zoom: level %d -> %d (factor %.3f, range [%d, %d])\n", before, ZOOM_LEVEL, zoom_factor(),
        lowest, ZOOM_MAX);
}

void press_function_key(GameLoop& g, SDL_Scancode key) {
    switch (key) {
    case SDL_SCANCODE_F1:
        return toggle_solo_view(g, 1);
    case SDL_SCANCODE_F2:
        return toggle_solo_view(g, 2);
    case SDL_SCANCODE_F3:
        return toggle_reverse_swap(g, g.sim.p1);
    case SDL_SCANCODE_F4:
        return toggle_reverse_swap(g, g.sim.p2);
    case SDL_SCANCODE_F5:
        return toggle_gas_inversion(g, g.sim.p1);
    case SDL_SCANCODE_F6:
        return toggle_gas_inversion(g, g.sim.p2);
    case SDL_SCANCODE_F7:
        return toggle_ghost_look(g);
    case SDL_SCANCODE_F8:
        g.show_fps = !g.show_fps;
        return;
    case SDL_SCANCODE_F9:
        return toggle_vsync(g);
    case SDL_SCANCODE_F10:
        return set_music_volume(g, GameLoop::DEFAULT_MUSIC_VOLUME);
    case SDL_SCANCODE_F11:
        return set_music_volume(g, g.music_volume - VOLUME_STEP);
    case SDL_SCANCODE_F12:
        return set_music_volume(g, g.music_volume + VOLUME_STEP);
    default:
        return;
    }
}

void press_race_key(GameLoop& g, SDL_Scancode key, std::uint16_t modifiers) {
    if (key >= SDL_SCANCODE_1 && key <= SDL_SCANCODE_9) {
        return press_slot(g, key - SDL_SCANCODE_1 + 1);
    }
    switch (key) {
    case SDL_SCANCODE_ESCAPE:
        return press_escape(g);
    case SDL_SCANCODE_BACKSPACE:
        return g.restart_from_key();
    case SDL_SCANCODE_G:
        return press_ghost_key(g, modifiers);
    case SDL_SCANCODE_K:
        return toggle_car_sound(g);
    case SDL_SCANCODE_L:
        return toggle_flying_start(g);
    case SDL_SCANCODE_M:
        return toggle_music(g);
    case SDL_SCANCODE_N:
        return next_song(g);
    case SDL_SCANCODE_P:
        return toggle_panning(g);
    case SDL_SCANCODE_T:
        return toggle_track_view(g);
    case SDL_SCANCODE_PAGEUP:
        return zoom_by(g, 1);
    case SDL_SCANCODE_PAGEDOWN:
        return zoom_by(g, -1);
    default:
        return press_function_key(g, key);
    }
}

void tell_lost_pad(GameLoop& g, SDL_JoystickID pad) {
    for (std::size_t i = 0; i < g.gamepads.size(); ++i) {
        SDL_Joystick* const joystick = g.gamepads.at(i).joystick;
        if (joystick == nullptr || SDL_JoystickInstanceID(joystick) != pad) continue;
        g.show_toast(texts::PAD_LOST.at(i), LOSS_SHOWS_MS);
    }
}

// Only the ways out live at game over; other keys are not even recorded for the controls.
void press_game_over_key(GameLoop& g, SDL_Scancode key) {
    bool const to_menu = key == SDL_SCANCODE_ESCAPE || key == SDL_SCANCODE_SPACE;
    if (!to_menu && key != SDL_SCANCODE_BACKSPACE) return;
    g.pressed_keys.at(static_cast<std::size_t>(key)) = true;
    if (to_menu) {
        g.go_to_menu();
    } else {
        g.restart_from_key();
    }
}

// A pad drives by what it holds; these are its few buttons that are keys of the race.
void press_pad(GameLoop& g, PadPress const& press) {
    if (g.sim.game_over) {
        press_pad_at_game_over(g, press.button);
    } else if (press.button == PadButton::Start) {
        press_escape(g);
    } else if (press.button == PadButton::Y) {
        g.restart_from_key();
    } else if (press.button == PadButton::Back) {
        g.pads.swap_sides(press.pad, false);
    }
}

} // namespace

void GameLoop::restart_from_key() {
    restart_race(false, !sim.game_over);
    reset_players();
    show_toast(texts::RESTART);
    say("race restarted\n");
}

void GameLoop::poll_events() {
    pressed_keys.fill(false);
    pads.forget_taps();
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) running = false;
        if (event.type == SDL_JOYDEVICEREMOVED) tell_lost_pad(*this, event.jdevice.which);
        if (auto const press = pads.handle(event, SDL_GetTicks())) press_pad(*this, *press);
        if (std::string const news = pads.take_news(); !news.empty()) show_toast(news.c_str());
        // Key repeats count: a held key acts again, as it does everywhere else on the desktop.
        if (event.type != SDL_KEYDOWN) continue;
        SDL_Scancode const key = event.key.keysym.scancode;
        if (sim.game_over) {
            press_game_over_key(*this, key);
        } else if (static_cast<std::size_t>(key) < pressed_keys.size()) {
            pressed_keys.at(static_cast<std::size_t>(key)) = true;
            press_race_key(*this, key, event.key.keysym.mod);
        }
    }
}
