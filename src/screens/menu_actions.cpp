#include "screens/menu_actions.h"

#include "render/colors.h"

namespace {

constexpr unsigned NOTE_MS = 2000;

// The field that had the focus is left: what was typed stands, less the blanks around it.
void leave_field(MenuScreen& menu) {
    if (menu.names.focus == -1) return;
    NameField& field = focused_field(menu);
    if (trim_blanks(field)) refresh_field(field, menu.mode_font.get(), menu.renderer);
    menu.names.focus = -1;
}

void flip(bool& value) {
    value = !value;
}

} // namespace

bool launching(MenuScreen const& menu) {
    return menu.launch.launch_at != 0;
}

void open_help(MenuScreen& menu, unsigned now) {
    if (launching(menu)) return;
    turn_help_page(menu, 1);
    menu.screen_phase = ScreenPhase::TO_HELP;
    menu.help_at = now;
}

void close_help(MenuScreen& menu, unsigned now) {
    menu.screen_phase = ScreenPhase::FROM_HELP;
    menu.help_at = now;
}

void turn_help_page(MenuScreen& menu, int page) {
    if (menu.help_page.number == page) return;
    menu.help_page = {};
    menu.help_page.number = page;
}

void launch_if_chosen(MenuScreen& menu, unsigned now) {
    if (menu.tracks.selected_track != 0) start_launch(menu, now);
}

void choose_mode(MenuScreen& menu, int mode) {
    menu.mode.selected = mode;
}

void choose_laps(MenuScreen& menu, int option) {
    menu.mode.lap_index = option;
}

void toggle_switch(MenuScreen& menu, Switch which) {
    switch (which) {
    case Switch::Bumps:
        return flip(menu.switches.race.bumps);
    case Switch::Rumble:
        if (menu.pads != nullptr) flip(menu.pads->rumble_on);
        return;
    case Switch::ComputerRed:
        return flip(menu.switches.race.computer_red);
    case Switch::ComputerBlue:
        return flip(menu.switches.race.computer_blue);
    }
}

NameField& focused_field(MenuScreen& menu) {
    return menu.names.fields[static_cast<std::size_t>(menu.names.focus)];
}

void show_field(MenuScreen& menu, NameField& field, unsigned now) {
    refresh_field(field, menu.mode_font.get(), menu.renderer);
    menu.names.blink_at = now;
}

void focus_field(MenuScreen& menu, int index, unsigned now) {
    leave_field(menu);
    menu.names.focus = index;
    NameField& field = focused_field(menu);
    field.cursor = static_cast<int>(field.text.size());
    show_field(menu, field, now);
    SDL_StartTextInput();
}

void drop_focus(MenuScreen& menu) {
    if (menu.names.focus == -1) return;
    leave_field(menu);
    SDL_StopTextInput();
}

void type_text(MenuScreen& menu, char const* text, unsigned now) {
    if (menu.names.focus == -1) return;
    NameField& field = focused_field(menu);
    if (insert_text(field, text)) show_field(menu, field, now);
}

void show_note(MenuScreen& menu, char const* text, unsigned now) {
    menu.note.text = text;
    menu.note.until = now + NOTE_MS;
    make_note_label(menu);
}

void make_note_label(MenuScreen& menu) {
    menu.note.label = make_label(menu.renderer, menu.menu_scale, menu.note_font.get(),
                                 menu.note.text.c_str(), WHITE);
}
