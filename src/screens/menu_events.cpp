// Keys and mouse of the menu.

#include "screens/fullscreen.h"
#include "screens/menu_screen.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

bool launching(MenuScreen const& menu) {
    return menu.launch.launch_at != 0;
}

void open_help(MenuScreen& menu, unsigned now) {
    if (launching(menu)) return;
    menu.screen_phase = ScreenPhase::TO_HELP;
    menu.help_at = now;
}

void close_help(MenuScreen& menu, unsigned now) {
    menu.screen_phase = ScreenPhase::FROM_HELP;
    menu.help_at = now;
}

void launch_if_chosen(MenuScreen& menu, unsigned now) {
    if (menu.tracks.selected_track != 0) start_launch(menu, now);
}

// Shows a change of the field; the caret is seen at once after it.
void show_field(MenuScreen& menu, NameField& field, unsigned now) {
    refresh_field(field, menu.mode_font.get(), menu.renderer);
    menu.names.blink_at = now;
}

NameField& focused_field(MenuScreen& menu) {
    return menu.names.fields[static_cast<std::size_t>(menu.names.focus)];
}

void focus_field(MenuScreen& menu, int index, unsigned now) {
    menu.names.focus = index;
    NameField& field = focused_field(menu);
    field.cursor = static_cast<int>(field.text.size());
    show_field(menu, field, now);
    SDL_StartTextInput();
}

void drop_focus(MenuScreen& menu) {
    if (menu.names.focus == -1) return;
    menu.names.focus = -1;
    SDL_StopTextInput();
}

void type_text(MenuScreen& menu, char const* text, unsigned now) {
    if (menu.names.focus == -1) return;
    NameField& field = focused_field(menu);
    if (insert_text(field, text)) show_field(menu, field, now);
}

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
    if (mode.selected == MODE_RACE)
        mode.lap_index = (mode.lap_index + 1) % static_cast<int>(LAP_COUNTS.size());
    mode.selected = MODE_RACE;
}

bool is_help_key(SDL_Keysym const& key) {
    return key.scancode == SDL_SCANCODE_SLASH || key.sym == SDLK_SLASH || key.sym == SDLK_QUESTION;
}

void handle_menu_key(MenuScreen& menu, SDL_Keysym const& key, unsigned now) {
    SDL_Scancode const code = key.scancode;
    if (code >= SDL_SCANCODE_1 && code <= SDL_SCANCODE_9) {
        pick_digit(menu.tracks, code - SDL_SCANCODE_1 + 1, menu_view(menu.W, menu.H),
                   thumb_maker(menu), now);
        return;
    }
    switch (code) {
    case SDL_SCANCODE_P:
        menu.mode.selected = MODE_PRACTICE;
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
        if (cursor_in(menu, mode_row_box(menu.mode, view, row))) menu.mode.selected = row;
    }
}

void click_laps(MenuScreen& menu, SDL_Rect const& view) {
    if (menu.mode.selected != MODE_RACE) return;
    for (std::size_t i = 0; i < LAP_COUNTS.size(); ++i) {
        if (cursor_in(menu, lap_option_box(menu.mode, view, i)))
            menu.mode.lap_index = static_cast<int>(i);
    }
}

void click_tracks(MenuScreen& menu, SDL_Rect const& view, unsigned now) {
    std::vector<SDL_Rect> const rects = track_rects(menu.tracks, view, now);
    auto const hit = std::find_if(rects.begin(), rects.end(),
                                  [&menu](SDL_Rect const& rect) { return cursor_in(menu, rect); });
    if (hit == rects.end()) return;
    auto const index = static_cast<std::size_t>(hit - rects.begin());
    if (index < menu.tracks.thumbs.size())
        pick_row(menu.tracks, index, now);
    else if (menu.tracks.extra_slot != 0)
        pick_extra(menu.tracks);
}

void click(MenuScreen& menu, unsigned now) {
    SDL_Rect const view = menu_view(menu.W, menu.H);
    if (!launching(menu) && cursor_in(menu, help_button_box(menu.help_label, view))) {
        open_help(menu, now);
        return;
    }
    click_names(menu, view, now);
    click_modes(menu, view);
    click_laps(menu, view);
    click_tracks(menu, view, now);
    if (menu.start.tex && cursor_in(menu, start_button_box(menu.start, view)))
        launch_if_chosen(menu, now);
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
        type_text(menu, event.text.text, now);
        break;
    case SDL_KEYDOWN:
        if (menu.names.focus != -1)
            handle_name_key(menu, event.key.keysym, now);
        else
            handle_menu_key(menu, event.key.keysym, now);
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
    if (event.type != SDL_KEYDOWN) return;
    SDL_Scancode const key = event.key.keysym.scancode;
    if (key == SDL_SCANCODE_F11)
        toggle_fullscreen(menu.window, *menu.fullscreen);
    else if (closes_help(key))
        close_help(menu, now);
}

} // namespace

void handle_menu_event(MenuScreen& menu, SDL_Event const& event, unsigned now) {
    if (event.type == SDL_QUIT)
        menu.running = false;
    else if (menu.screen_phase == ScreenPhase::MENU)
        handle_in_menu(menu, event, now);
    else if (menu.screen_phase == ScreenPhase::HELP)
        handle_in_help(menu, event, now);
}
