#pragma once

// The menu's switches, in the free room under the modes and the names: bumps, the pads' rumble
// where there are pads, and which cars the computer drives. Each is a small box with a word.

#include "base/race_switches.h"
#include "screens/menu_layout.h"

#include <SDL.h>

#include <array>
#include <cstdint>
#include <string>

enum class Switch : std::uint8_t { Bumps, Rumble, ComputerRed, ComputerBlue };
inline constexpr std::array ALL_SWITCHES{Switch::Bumps, Switch::Rumble, Switch::ComputerRed,
                                         Switch::ComputerBlue};

// A line that stands on the menu until a tick of SDL_GetTicks.
struct MenuNote {
    std::string text;
    MenuLabel label;
    std::uint32_t until = 0;
};

// The keys of the menu that flip them, where they lie on any layout.
inline constexpr std::array SWITCH_KEYS{SDL_SCANCODE_B, SDL_SCANCODE_V, SDL_SCANCODE_F3,
                                        SDL_SCANCODE_F4};

struct MenuSwitches {
    RaceSwitches race;
    std::array<MenuLabel, ALL_SWITCHES.size()> words; // white, by Switch
    MenuLabel drives;                                 // before the computer's two
    MenuLabel no_records;
};

// What the switches' places hang on.
struct SwitchPlaces {
    GameMode const& mode;
    PlayerNames const& names;
    SDL_Rect view;
    bool has_rumble;
};

// Where a switch stands and is hit; empty for one that is not there.
SDL_Rect switch_box(MenuSwitches const& switches, SwitchPlaces const& places, Switch which);

void draw_switches(SDL_Renderer* renderer, MenuSwitches const& switches, SwitchPlaces const& places,
                   bool rumble_on);
// The note, while it stands; else, where it is so, that no records are kept.
void draw_note(SDL_Renderer* renderer, MenuSwitches const& switches, MenuNote const& note,
               SDL_Rect const& view, unsigned now);
