// Keys and mouse of the menu.

#include "screens/fullscreen.h"
#include "screens/held_key.h"
#include "screens/menu_actions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace {

// A key while a name has the focus: what edits nothing here comes as text instead.
void handle_name_key(MenuScreen& menu, SDL_Keysym const& key, unsigned now) {
    switch (key.sym) {
    case SDLK_F1:
        if (menu.names.focus == 1) focus_field(menu, 0, now);
        return;
    case SDLK_F2:
        if (menu.names.focus == 0) focus_field(menu, 1, now);
        return;
    case SDLK_F11:
        toggle_fullscreen(menu.window, *menu.fullscreen);
        return;
    case SDLK_RETURN:
    case SDLK_ESCAPE:
    case SDLK_KP_ENTER:
        drop_focus(menu);
        return;
    default:
        break;
    }
    NameField& field = focused_field(menu);
    if (edit_field(field, key)) show_field(menu, field, now);
}

// R chooses the race, and again and again its number of laps.
void choose_race(GameMode& mode) {
    if (mode.selected == MODE_RACE) {
        mode.lap_index = (mode.lap_index + 1) % static_cast<int>(LAP_COUNTS.size());
    }
    mode.selected = MODE_RACE;
}

bool is_help_key(SDL_Keysym const& key) {
    return key.scancode == SDL_SCANCODE_SLASH || key.sym == SDLK_SLASH || key.sym == SDLK_QUESTION;
}

std::optional<Switch> switch_of(SDL_Scancode key) {
    auto const at = std::find(SWITCH_KEYS.begin(), SWITCH_KEYS.end(), key);
    if (at == SWITCH_KEYS.end()) return std::nullopt;
    return ALL_SWITCHES.at(static_cast<std::size_t>(at - SWITCH_KEYS.begin()));
}

void handle_menu_key(MenuScreen& menu, SDL_Keysym const& key, unsigned now) {
    SDL_Scancode const code = key.scancode;
    if (code >= SDL_SCANCODE_1 && code <= SDL_SCANCODE_9) {
        pick_digit(menu.tracks, code - SDL_SCANCODE_1 + 1, menu_view(menu.W, menu.H),
                   thumb_maker(menu), now);
        return;
    }
    if (auto const which = switch_of(code)) return toggle_switch(menu, *which);
    switch (code) {
    case SDL_SCANCODE_P:
        choose_mode(menu, MODE_PRACTICE);
        break;
    case SDL_SCANCODE_R:
        choose_race(menu.mode);
        break;
    case SDL_SCANCODE_RETURN:
    case SDL_SCANCODE_SPACE:
    case SDL_SCANCODE_KP_ENTER:
        launch_if_chosen(menu, now);
        break;
    case SDL_SCANCODE_ESCAPE:
        menu.running = false;
        break;
    case SDL_SCANCODE_F1:
        focus_field(menu, 0, now);
        break;
    case SDL_SCANCODE_F2:
        focus_field(menu, 1, now);
        break;
    case SDL_SCANCODE_F11:
        toggle_fullscreen(menu.window, *menu.fullscreen);
        break;
    default:
        if (is_help_key(key)) open_help(menu, now);
        break;
    }
}

void move_cursor(MenuScreen& menu, SDL_MouseMotionEvent const& motion, unsigned now) {
    auto const moved = [](float at, int by, double gain, int limit) {
        return static_cast<float>(
            std::clamp(static_cast<double>(at) + by * gain, 0.0, static_cast<double>(limit)));
    };
    MenuCursor& cursor = menu.cursor;
    cursor.x = moved(cursor.x, motion.xrel, menu.gain_x, menu.W);
    cursor.y = moved(cursor.y, motion.yrel, menu.gain_y, menu.H);
    cursor.moved_at = now;
    cursor.visible = true;
}

bool cursor_in(MenuScreen const& menu, SDL_Rect const& box) {
    return inside(box, menu.cursor.x, menu.cursor.y);
}

void click_names(MenuScreen& menu, SDL_Rect const& view, unsigned now) {
    for (int row : {1, 0}) {
        if (!cursor_in(menu, name_row_box(menu.names, view, row))) continue;
        if (menu.names.focus != row) focus_field(menu, row, now);
        return;
    }
    drop_focus(menu);
}

void click_modes(MenuScreen& menu, SDL_Rect const& view) {
    for (int row : {MODE_PRACTICE, MODE_RACE}) {
        if (cursor_in(menu, mode_row_box(menu.mode, view, row))) choose_mode(menu, row);
    }
}

void click_laps(MenuScreen& menu, SDL_Rect const& view) {
    if (menu.mode.selected != MODE_RACE) return;
    for (std::size_t i = 0; i < LAP_COUNTS.size(); ++i) {
        if (cursor_in(menu, lap_option_box(menu.mode, view, i))) {
            choose_laps(menu, static_cast<int>(i));
        }
    }
}

void click_switches(MenuScreen& menu) {
    for (Switch const which : ALL_SWITCHES) {
        if (cursor_in(menu, switch_box(menu.switches, switch_places(menu), which))) {
            toggle_switch(menu, which);
        }
    }
}

void click_tracks(MenuScreen& menu, SDL_Rect const& view, unsigned now) {
    std::vector<SDL_Rect> const rects = track_rects(menu.tracks, view, now);
    auto const hit = std::find_if(rects.begin(), rects.end(),
                                  [&menu](SDL_Rect const& rect) { return cursor_in(menu, rect); });
    if (hit == rects.end()) return;
    auto const index = static_cast<std::size_t>(hit - rects.begin());
    if (index < menu.tracks.thumbs.size()) {
        pick_row(menu.tracks, index, now);
    } else if (menu.tracks.extra_slot != 0) {
        pick_extra(menu.tracks);
    }
}

void click(MenuScreen& menu, unsigned now) {
    if (menu.letters.open) return drop_focus(menu); // what lies under them is not hit
    SDL_Rect const view = menu_view(menu.W, menu.H);
    if (!launching(menu) && cursor_in(menu, help_button_box(menu.help_label, view))) {
        open_help(menu, now);
        return;
    }
    click_names(menu, view, now);
    click_modes(menu, view);
    click_laps(menu, view);
    click_switches(menu);
    click_tracks(menu, view, now);
    if (menu.start.tex && cursor_in(menu, start_button_box(menu.start, view))) {
        launch_if_chosen(menu, now);
    }
}

bool is_shift(SDL_Scancode key) {
    return key == SDL_SCANCODE_LSHIFT || key == SDL_SCANCODE_RSHIFT;
}

void handle_in_menu(MenuScreen& menu, SDL_Event const& event, unsigned now) {
    switch (event.type) {
    case SDL_MOUSEMOTION:
        move_cursor(menu, event.motion, now);
        break;
    case SDL_MOUSEBUTTONDOWN:
        click(menu, now);
        break;
    case SDL_TEXTINPUT:
        if (menu.names.focus != -1) {
            type_text(menu, event.text.text, now);
        } else if (std::string_view(event.text.text) == "?") {
            open_help(menu, now);
        }
        break;
    case SDL_KEYUP:
        if (menu.names.focus == -1 && is_shift(event.key.keysym.scancode)) {
            SDL_EventState(SDL_TEXTINPUT, SDL_DISABLE);
        }
        break;
    case SDL_KEYDOWN:
        if (is_held_over(event.key)) break;
        if (menu.names.focus != -1) {
            handle_name_key(menu, event.key.keysym, now);
        } else {
            handle_menu_key(menu, event.key.keysym, now);
        }
        break;
    default:
        break;
    }
}

// Tab and Alt leave the page up, so that switching to another window does not close it.
bool closes_help(SDL_Scancode key) {
    return key != SDL_SCANCODE_TAB && key != SDL_SCANCODE_LALT && key != SDL_SCANCODE_RALT;
}

void handle_in_help(MenuScreen& menu, SDL_Event const& event, unsigned now) {
    if (event.type == SDL_MOUSEBUTTONDOWN) close_help(menu, now);
    if (event.type == SDL_MOUSEWHEEL) turn_help_page(menu, event.wheel.y < 0 ? 2 : 1);
    if (event.type != SDL_KEYDOWN || is_held_over(event.key)) return;
    SDL_Scancode const key = event.key.keysym.scancode;
    int const page = menu.help_page.number;
    if (key == SDL_SCANCODE_F11) {
        toggle_fullscreen(menu.window, *menu.fullscreen);
    } else if (key == SDL_SCANCODE_RIGHT && page == 1) {
        turn_help_page(menu, 2);
    } else if (key == SDL_SCANCODE_LEFT && page == 2) {
        turn_help_page(menu, 1);
    } else if (closes_help(key)) {
        close_help(menu, now);
    }
}

// The help's second page names the pads.
void tell_news(MenuScreen& menu, std::string const& news, unsigned now) {
    show_note(menu, news.c_str(), now);
    menu.help_page.tex.reset();
}

// The first direction or A of a pad only shows where on the menu it stands.
void handle_pads(MenuScreen& menu, SDL_Event const& event, unsigned now) {
    bool const could_see = menu.focus_shown;
    std::optional<PadPress> const press = menu.pads->handle(event, now);
    menu.focus_shown = menu.pads->in_use();
    if (std::string const news = menu.pads->take_news(); !news.empty()) tell_news(menu, news, now);
    if (press &&
        (could_see || menu.screen_phase != ScreenPhase::MENU || press->button > PadButton::A)) {
        handle_menu_pad(menu, *press, now);
    }
}

} // namespace

// SDL calls this at the very key: the next one may be in the queue before the menu sees this one.
int hear_text_with_shift(void* userdata, SDL_Event* event) {
    auto const& menu = *static_cast<MenuScreen const*>(userdata);
    if (event->type == SDL_KEYDOWN && is_shift(event->key.keysym.scancode) &&
        menu.screen_phase == ScreenPhase::MENU) {
        SDL_EventState(SDL_TEXTINPUT, SDL_ENABLE);
    }
    return 1;
}

void handle_menu_event(MenuScreen& menu, SDL_Event const& event, unsigned now) {
    if (menu.pads != nullptr) handle_pads(menu, event, now);
    if (event.type == SDL_KEYMAPCHANGED) {
        menu.help_page.tex.reset(); // it shows the layout's letters
    }
    if (event.type == SDL_QUIT) {
        menu.running = false;
    } else if (menu.screen_phase == ScreenPhase::MENU) {
        handle_in_menu(menu, event, now);
    } else if (menu.screen_phase == ScreenPhase::HELP) {
        handle_in_help(menu, event, now);
    }
}
