// Pads on the menu and its help screen.

#include "screens/fullscreen.h"
#include "screens/menu_actions.h"

namespace {

constexpr char const* LEAVE_NOTE = "press B again to leave the game";
constexpr unsigned LEAVE_MS = 2000;

struct Direction {
    int dx = 0;
    int dy = 0;
};

Direction direction_of(PadButton button) {
    switch (button) {
    case PadButton::Up:
        return {0, -1};
    case PadButton::Down:
        return {0, 1};
    case PadButton::Left:
        return {-1, 0};
    case PadButton::Right:
        return {1, 0};
    default:
        return {};
    }
}

void edit_name(MenuScreen& menu, SDL_Keycode key, unsigned now) {
    SDL_Keysym pressed{};
    pressed.sym = key;
    NameField& field = focused_field(menu);
    if (edit_field(field, pressed)) show_field(menu, field, now);
}

void next_page(MenuScreen& menu) {
    next_letter_page(menu.letters, menu.renderer, menu.menu_scale, menu.mode_font.get());
}

void end_name(MenuScreen& menu) {
    drop_focus(menu);
    close_letter_grid(menu.letters);
}

void press_grid_key(MenuScreen& menu, unsigned now) {
    std::string const letter = focused_letter(menu.letters);
    if (!letter.empty()) return type_text(menu, letter.c_str(), now);
    switch (focused_key(menu.letters)) {
    case GridKey::Page:
        return next_page(menu);
    case GridKey::Blank:
        return type_text(menu, " ", now);
    case GridKey::Delete:
        return edit_name(menu, SDLK_BACKSPACE, now);
    case GridKey::Done:
        return end_name(menu);
    }
}

void press_in_grid(MenuScreen& menu, PadButton button, unsigned now) {
    switch (button) {
    case PadButton::A:
        return press_grid_key(menu, now);
    case PadButton::X:
        return edit_name(menu, SDLK_BACKSPACE, now);
    case PadButton::Y:
        return next_page(menu);
    case PadButton::LB:
        return edit_name(menu, SDLK_LEFT, now);
    case PadButton::RB:
        return edit_name(menu, SDLK_RIGHT, now);
    case PadButton::B:
    case PadButton::Start:
        return end_name(menu);
    default:
        return move_in_grid(menu.letters, direction_of(button).dx, direction_of(button).dy);
    }
}

void write_name(MenuScreen& menu, int index, unsigned now) {
    focus_field(menu, index, now);
    open_letter_grid(menu.letters, menu.renderer, menu.menu_scale, menu.mode_font.get(),
                     menu.caption_font.get());
}

// What is chosen already is launched.
void choose_track(MenuScreen& menu, FocusItem const& item, unsigned now) {
    MenuTracks& tracks = menu.tracks;
    bool const extra = item.kind == FocusKind::Extra;
    bool const chosen =
        extra ? tracks.selected_track == tracks.extra_slot : tracks.selected_row == item.index;
    if (chosen) return launch_if_chosen(menu, now);
    if (extra) return pick_extra(tracks);
    pick_row(tracks, static_cast<std::size_t>(item.index), now);
}

void choose(MenuScreen& menu, FocusItem const& item, unsigned now) {
    switch (item.kind) {
    case FocusKind::Mode:
        return choose_mode(menu, item.index);
    case FocusKind::Laps:
        return choose_laps(menu, item.index);
    case FocusKind::Name:
        return write_name(menu, item.index, now);
    case FocusKind::Switch:
        return toggle_switch(menu, static_cast<Switch>(item.index));
    case FocusKind::Track:
    case FocusKind::Extra:
        return choose_track(menu, item, now);
    case FocusKind::Start:
        return launch_if_chosen(menu, now);
    case FocusKind::Help:
        return open_help(menu, now);
    }
}

bool is_last_track(MenuScreen const& menu, FocusItem const& item) {
    if (item.kind == FocusKind::Extra) return true;
    return item.kind == FocusKind::Track && menu.tracks.extra_slot == 0 &&
           item.index + 1 == static_cast<int>(menu.tracks.thumbs.size());
}

// Beyond the end of the row lie the hidden tracks, as they do behind the keys 6 to 9.
bool bring_up_hidden(MenuScreen& menu, unsigned now) {
    int const from = menu.tracks.extra_slot != 0 ? menu.tracks.extra_slot : ROW_SLOTS;
    for (int slot = from + 1; slot <= 9; ++slot) {
        pick_digit(menu.tracks, slot, menu_view(menu.W, menu.H), thumb_maker(menu), now);
        if (menu.tracks.extra_slot != slot) continue;
        menu.focus = {FocusKind::Extra, 0, {}};
        return true;
    }
    return false;
}

void move_focus(MenuScreen& menu, std::vector<FocusItem> const& items, FocusItem const& item,
                Direction way, unsigned now) {
    if (way.dx > 0 && is_last_track(menu, item) && bring_up_hidden(menu, now)) return;
    FocusItem const* const next = neighbour(items, item, way.dx, way.dy);
    menu.focus = next != nullptr ? *next : item;
}

// One stray press is not the end of the game.
void leave_at_second(MenuScreen& menu, unsigned now) {
    if (menu.leave_until != 0 && now < menu.leave_until) {
        menu.running = false;
        return;
    }
    menu.leave_until = now + LEAVE_MS;
    show_note(menu, LEAVE_NOTE, now);
}

void press_in_menu(MenuScreen& menu, PadPress const& press, unsigned now) {
    std::vector<FocusItem> const items = focus_items(menu, now);
    FocusItem const* const item = focused(items, menu.focus);
    switch (press.button) {
    case PadButton::A:
        if (item != nullptr) choose(menu, *item, now);
        return;
    case PadButton::B:
        return leave_at_second(menu, now);
    case PadButton::Start:
        return launch_if_chosen(menu, now);
    case PadButton::X:
        return toggle_fullscreen(menu.window, *menu.fullscreen);
    case PadButton::Y:
        return open_help(menu, now);
    case PadButton::Back:
        return menu.pads->swap_sides(press.pad, true);
    default:
        break;
    }
    Direction const way = direction_of(press.button);
    if (item != nullptr && (way.dx != 0 || way.dy != 0)) move_focus(menu, items, *item, way, now);
}

void press_in_help(MenuScreen& menu, PadButton button, unsigned now) {
    switch (button) {
    case PadButton::Right:
    case PadButton::RB:
        return turn_help_page(menu, 2);
    case PadButton::Left:
    case PadButton::LB:
        return turn_help_page(menu, 1);
    case PadButton::X:
        return toggle_fullscreen(menu.window, *menu.fullscreen);
    case PadButton::Up:
    case PadButton::Down:
        return;
    default:
        return close_help(menu, now);
    }
}

} // namespace

void handle_menu_pad(MenuScreen& menu, PadPress const& press, unsigned now) {
    if (menu.screen_phase == ScreenPhase::HELP) return press_in_help(menu, press.button, now);
    if (menu.screen_phase != ScreenPhase::MENU) return;
    if (menu.letters.open) return press_in_grid(menu, press.button, now);
    press_in_menu(menu, press, now);
}
