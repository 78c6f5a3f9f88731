#include "screens/menu_loop.h"

#include "audio/music_fade.h"
#include "audio/sound_slots.h"
#include "records/player_names.h"
#include "records/replace_file.h"
#include "screens/menu_actions.h"
#include "screens/menu_drawing.h"
#include "screens/menu_render.h"
#include "screens/menu_track_notes.h"

#include <algorithm>
#include <utility>

namespace {

constexpr float HELP_MS = 320.0F;         // each way between menu and help, half of it to black
constexpr unsigned ENGINE_AT_MS = 450;    // the engine starts, times since the launch
constexpr unsigned FADE_AT_MS = 1450;     // the screen begins to go black
constexpr unsigned LAUNCHED_AT_MS = 1950; // the race begins
constexpr double MUSIC_FADE_S = 3.0;

bool points_at_help(MenuScreen const& menu, unsigned now) {
    return menu.screen_phase == ScreenPhase::MENU && cursor_shows(menu.cursor, now) &&
           inside(help_button_box(menu.help_label, menu_view(menu.W, menu.H)), menu.cursor.x,
                  menu.cursor.y);
}

// The switches, and what is there for a pad.
void draw_more(MenuScreen& menu, SDL_Rect const& view, unsigned now) {
    if (menu.header) {
        draw_switches(menu.renderer, menu.switches, switch_places(menu),
                      menu.pads != nullptr && menu.pads->rumble_on);
    }
    if (menu.header) draw_no_tracks_label(menu, view);
    draw_note(menu.renderer, menu.switches, menu.note, view, now);
    if (menu.letters.open) {
        SDL_Color const edge = menu.names.focus == 0 ? RED_NAME : BLUE_NAME;
        return draw_letter_grid(menu.renderer, menu.letters, view, edge, now);
    }
    if (!menu.focus_shown || launching(menu)) return;
    std::vector<FocusItem> const items = focus_items(menu, now);
    if (FocusItem const* const item = focused(items, menu.focus)) {
        draw_focus(menu.renderer, item->box, now);
    }
}

void draw_menu_frame(MenuScreen& menu, float fade, unsigned now) {
    menu.names.driven = {menu.switches.race.computer_red, menu.switches.race.computer_blue};
    TrackFactors const factors = track_factors(menu.tracks, now);
    render_menu(menu.renderer, menu.header, menu.header_w, menu.header_h, menu.W, menu.H,
                menu.heading_mode, menu.heading_names, menu.heading_tracks, menu.mode, menu.names,
                menu.tracks.thumbs, menu.tracks.selected_row, menu.tracks.have_best, menu.start,
                menu.tracks.selected_track != 0, menu.credits, menu.cursor, menu.sparkle, now,
                menu.help_label, menu.help_ring, points_at_help(menu, now), fade, factors.extra,
                factors.slide, factors.extra_alpha, factors.swap_t, factors.from_rects,
                [&menu, now](SDL_Rect const& view) { draw_more(menu, view, now); });
}

HelpFacts help_facts(MenuScreen const& menu) {
    HelpFacts facts;
    if (menu.keys != nullptr) facts.keys = *menu.keys;
    facts.switches = menu.switches.race;
    if (menu.pads == nullptr) return facts;
    facts.rumble = menu.pads->rumble_on;
    facts.pads = {menu.pads->name_of(1), menu.pads->name_of(2)};
    return facts;
}

void draw_help(MenuScreen& menu, float alpha) {
    render_help_screen(menu.renderer, menu.W, menu.H, menu.help_page, alpha, help_facts(menu));
}

void draw_to_help(MenuScreen& menu, float t, unsigned now) {
    if (t >= 1.0F) {
        draw_help(menu, 1.0F);
        menu.screen_phase = ScreenPhase::HELP;
    } else if (t < 0.5F) {
        draw_menu_frame(menu, 2.0F * t, now);
    } else {
        draw_help(menu, (t - 0.5F) * 2.0F);
    }
}

void draw_from_help(MenuScreen& menu, float t, unsigned now) {
    if (t >= 1.0F) {
        draw_menu_frame(menu, 0.0F, now);
        menu.screen_phase = ScreenPhase::MENU;
    } else if (t < 0.5F) {
        draw_help(menu, 1.0F - 2.0F * t);
    } else {
        draw_menu_frame(menu, 1.0F - (t - 0.5F) * 2.0F, now);
    }
}

void menu_frame(MenuScreen& menu) {
    menu.running = true;
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) handle_menu_event(menu, event, SDL_GetTicks());
    unsigned const now = SDL_GetTicks();
    if (menu.pads != nullptr) {
        if (auto const press = menu.pads->repeat(now)) handle_menu_pad(menu, *press, now);
    }
    if (menu.names.focus == -1) close_letter_grid(menu.letters);
    fit_menu(menu, now);
    float const fade = advance_launch(menu, now);
    draw_menu_phase(menu, fade, now);
}

template <typename T>
void give(T* out, T const& value) {
    if (out != nullptr) *out = value;
}

void leave_menu(MenuScreen& menu) {
    SDL_StopTextInput();
    for (NameField& field : menu.names.fields) trim_blanks(field);
    save_player_names(menu.names.fields[0].text, menu.names.fields[1].text);
    flush_replaced_files();
    SDL_SetRelativeMouseMode(SDL_FALSE);
    menu.audio->music_playing = false;
    release_bg_gradient();
    if (menu.title == nullptr) return;
    *menu.title = {std::move(menu.header), menu.header_w, menu.header_h,
                   std::move(menu.sparkle.points)};
}

} // namespace

void start_launch(MenuScreen& menu, unsigned now) {
    if (menu.launch.launch_at != 0) return;
    menu.launch.launch_at = menu.start.pressed_at = now;
    Audio& audio = *menu.audio;
    audio.request_sfx(DOOR_SLOT, 1.0F);
    audio.music_fade_step = fade_step_of(audio, MUSIC_FADE_S);
    audio.music_playing = false;
}

float advance_launch(MenuScreen& menu, unsigned now) {
    MenuLaunch& launch = menu.launch;
    if (launch.launch_at == 0) return 0.0F;
    unsigned const elapsed = now - launch.launch_at;
    if (elapsed >= ENGINE_AT_MS && !launch.engine_played) {
        menu.audio->request_sfx(ENGINE_SLOT, 0.8F);
        launch.engine_played = true;
    }
    if (elapsed >= LAUNCHED_AT_MS) {
        menu.running = false;
        launch.started = true;
    }
    if (elapsed <= FADE_AT_MS) return 0.0F;
    return std::min(1.0F, static_cast<float>(elapsed - FADE_AT_MS) /
                              static_cast<float>(LAUNCHED_AT_MS - FADE_AT_MS));
}

void draw_menu_phase(MenuScreen& menu, float fade, unsigned now) {
    float const t = std::min(1.0F, static_cast<float>(now - menu.help_at) / HELP_MS);
    switch (menu.screen_phase) {
    case ScreenPhase::MENU:
        draw_menu_frame(menu, fade, now);
        break;
    case ScreenPhase::TO_HELP:
        draw_to_help(menu, t, now);
        break;
    case ScreenPhase::HELP:
        draw_help(menu, 1.0F);
        break;
    case ScreenPhase::FROM_HELP:
        draw_from_help(menu, t, now);
        break;
    }
}

bool run_menu_screen(SDL_Window* window, SDL_Renderer* renderer, Audio& audio, bool& fullscreen,
                     bool load_music, int* mode_out, int* laps_out, int* track_out,
                     bool* started_out, std::string* red_name_out, std::string* blue_name_out,
                     bool open_help, MenuGuests const& guests) {
    MenuScreen menu;
    menu.window = window;
    menu.renderer = renderer;
    menu.audio = &audio;
    menu.fullscreen = &fullscreen;
    menu.pads = guests.pads;
    menu.keys = guests.keys;
    menu.title = guests.title;
    menu.focus_shown = menu.pads != nullptr && menu.pads->in_use();
    if (guests.switches != nullptr) menu.switches.race = *guests.switches;
    if (open_help) menu.screen_phase = ScreenPhase::HELP;
    set_up_menu(menu, load_music);
    note_failed_track(menu, guests.failed_track, menu.tracks.failed_picture, SDL_GetTicks());
    SDL_AddEventWatch(hear_text_with_shift, &menu);
    do {
        menu_frame(menu);
    } while (menu.running);
    SDL_DelEventWatch(hear_text_with_shift, &menu);
    leave_menu(menu);
    auto const lap_index = static_cast<std::size_t>(std::clamp(menu.mode.lap_index, 0, 2));
    give(guests.switches, menu.switches.race);
    give(mode_out, menu.mode.selected);
    give(laps_out, LAP_COUNTS[lap_index]);
    give(track_out, menu.tracks.selected_track);
    give(started_out, menu.launch.started);
    give(red_name_out, menu.names.fields[0].text);
    give(blue_name_out, menu.names.fields[1].text);
    return menu.launch.started;
}
