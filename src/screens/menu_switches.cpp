#include "screens/menu_switches.h"

#include "screens/menu_drawing.h"

namespace {

// Centres, shares of the view's height: of the switches, at the modes and the names over them, and
// of the line under the start button, clear of the race's laps above and of the heading below.
constexpr float SWITCHES_Y = 0.572F;
constexpr float NOTE_Y = 0.555F;
constexpr int SQUARE = 13;     // logical pixels
constexpr int SQUARE_GAP = 8;  // between a square and its word
constexpr int SWITCH_GAP = 22; // between two switches
constexpr int HIT_MARGIN = 4;  // around a switch under the mouse

MenuLabel const& word(MenuSwitches const& switches, Switch which) {
    return switches.words[static_cast<std::size_t>(which)];
}

int drawn_width(MenuSwitches const& switches, Switch which) {
    return SQUARE + SQUARE_GAP + word(switches, which).w;
}

int centre_y(SDL_Rect const& view) {
    return place_y(view, SWITCHES_Y);
}

int left_edge(MenuSwitches const& switches, SwitchPlaces const& places, Switch which) {
    int const modes = mode_block(places.mode, places.view).label_x;
    int const names =
        name_label_x(places.names, places.view, 1) + switches.drives.w + SWITCH_GAP / 2;
    switch (which) {
    case Switch::Bumps:
        return modes;
    case Switch::Rumble:
        return modes + drawn_width(switches, Switch::Bumps) + SWITCH_GAP;
    case Switch::ComputerRed:
        return names;
    case Switch::ComputerBlue:
        return names + drawn_width(switches, Switch::ComputerRed) + SWITCH_GAP;
    }
    return 0;
}

bool is_on(MenuSwitches const& switches, Switch which, bool rumble_on) {
    switch (which) {
    case Switch::Bumps:
        return switches.race.bumps;
    case Switch::Rumble:
        return rumble_on;
    case Switch::ComputerRed:
        return switches.race.computer_red;
    case Switch::ComputerBlue:
        return switches.race.computer_blue;
    }
    return false;
}

void draw_square(SDL_Renderer* renderer, int x, int y, bool on, SDL_Color colour) {
    SDL_Rect const frame{x, y - SQUARE / 2, SQUARE, SQUARE};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, colour.r, colour.g, colour.b, 255);
    SDL_RenderDrawRect(renderer, &frame);
    SDL_Rect const core{frame.x + 3, frame.y + 3, SQUARE - 6, SQUARE - 6};
    if (on) SDL_RenderFillRect(renderer, &core);
}

void draw_centred(SDL_Renderer* renderer, MenuLabel const& label, SDL_Rect const& view,
                  SDL_Color colour) {
    draw_label(renderer, label, view.x + (view.w - label.w) / 2,
               place_y(view, NOTE_Y) - label.h / 2, colour);
}

} // namespace

SDL_Rect switch_box(MenuSwitches const& switches, SwitchPlaces const& places, Switch which) {
    if (word(switches, which).w <= 0 || (which == Switch::Rumble && !places.has_rumble)) return {};
    int const h = word(switches, which).h;
    return {left_edge(switches, places, which) - HIT_MARGIN,
            centre_y(places.view) - h / 2 - HIT_MARGIN,
            drawn_width(switches, which) + 2 * HIT_MARGIN, h + 2 * HIT_MARGIN};
}

void draw_switches(SDL_Renderer* renderer, MenuSwitches const& switches, SwitchPlaces const& places,
                   bool rumble_on) {
    int const y = centre_y(places.view);
    draw_label(renderer, switches.drives, name_label_x(places.names, places.view, 1),
               y - switches.drives.h / 2, DIM);
    for (Switch const which : ALL_SWITCHES) {
        if (switch_box(switches, places, which).w == 0) continue;
        bool const on = is_on(switches, which, rumble_on);
        int const x = left_edge(switches, places, which);
        MenuLabel const& label = word(switches, which);
        draw_square(renderer, x, y, on, on ? GOLD : DIM);
        draw_label(renderer, label, x + SQUARE + SQUARE_GAP, y - label.h / 2, on ? GOLD : DIM);
    }
}

void draw_note(SDL_Renderer* renderer, MenuSwitches const& switches, MenuNote const& note,
               SDL_Rect const& view, unsigned now) {
    if (static_cast<std::int32_t>(note.until - now) > 0) {
        draw_centred(renderer, note.label, view, GOLD);
    } else if (!is_recorded(switches.race)) {
        draw_centred(renderer, switches.no_records, view, DIM);
    }
}
