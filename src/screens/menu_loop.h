#pragma once

// The menu: a modal loop that ends when the players launch a track or leave.

#include "base/sdl_handles.h"
#include "input/key_bindings.h"

#include <SDL.h>

#include <string>
#include <vector>

class Pads;
struct Audio;
struct RaceSwitches;

// The title art, which takes most of the time that it takes to set up a menu.
struct TitleArt {
    TextureHandle picture; // null before the first menu
    int w = 0;             // pixels
    int h = 0;
    std::vector<SDL_Point> rim; // where a sparkle may sit
};

// What else the menu works on; each may be null. The switches are read and written.
struct MenuGuests {
    Pads* pads = nullptr;
    RaceSwitches* switches = nullptr;
    KeyBindings const* keys = nullptr; // in force; else the built-in ones are
    std::string failed_track;          // the name of one that was launched and failed to load
    TitleArt* title = nullptr;         // kept from one menu to the next
};

// True if a track was launched; the screen is black then. `load_music` makes the menu start its
// own music, `open_help` opens it on the help screen. `mode_out` receives 0 for practice and 1
// for a race, `laps_out` 3, 5 or 10, `track_out` the slot 1..9 or 0. Every out-pointer may be
// null; none is read.
bool run_menu_screen(SDL_Window* window, SDL_Renderer* renderer, Audio& audio, bool& fullscreen,
                     bool load_music, int* mode_out, int* laps_out, int* track_out,
                     bool* started_out, std::string* red_name_out, std::string* blue_name_out,
                     bool open_help, MenuGuests const& guests = {});
