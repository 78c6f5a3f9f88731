#pragma once

// Everything that the menu's loop works on, and the steps of the loop. The record is plain so that
// each step can be called by itself: events, time and the renderer all come from outside.

#include "base/sdl_handles.h"
#include "input/pads.h"
#include "screens/help_screen.h"
#include "screens/letter_grid.h"
#include "screens/menu_focus.h"
#include "screens/menu_model.h"
#include "screens/menu_switches.h"
#include "screens/menu_tracks.h"
#include "screens/name_field.h"
#include "screens/sparkle.h"

#include <SDL.h>

#include <array>
#include <cstdint>
#include <string>

struct Audio;
struct TitleArt;

enum class ScreenPhase { MENU, TO_HELP, HELP, FROM_HELP };

// A launch can't be taken back: the music fades, the engine starts, the screen goes black.
struct MenuLaunch {
    std::uint32_t launch_at = 0; // tick of the launch, 0 while none runs
    bool engine_played = false;
    bool started = false; // it has run to its end
};

struct MenuScreen {
    // Lent by the caller.
    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
    Audio* audio = nullptr;
    bool* fullscreen = nullptr;
    Pads* pads = nullptr; // null where there can be none
    KeyBindings const* keys = nullptr;
    TitleArt* title = nullptr; // null if it is not kept

    // The screen as it was found at the start.
    int W = 0; // logical size
    int H = 0;
    int output_w = 0; // real pixels
    int output_h = 0;
    std::uint32_t resized_at = 0; // pictures are still those of another size; 0 for none
    double menu_scale = 1.0;      // output pixels per logical pixel
    double gain_x = 4.0;          // logical pixels per unit of relative mouse motion
    double gain_y = 4.0;

    // What it shows.
    TextureHandle header; // the title art
    int header_w = 0;
    int header_h = 0;
    SparkleFx sparkle;
    MenuLabel heading_mode;
    MenuLabel heading_names;
    MenuLabel heading_tracks;
    MenuLabel credits;
    MenuLabel help_label;
    TextureHandle help_ring;
    FontHandle mode_font;    // also of the name fields
    FontHandle small_font;   // of the thumbnails
    FontHandle caption_font; // of the switches, and of what tells what to do
    FontHandle note_font;
    GameMode mode;
    PlayerNames names;
    MenuTracks tracks;
    std::array<MenuLabel, 2> no_tracks; // where they belong, if there are none
    StartButton start;
    MenuCursor cursor;
    KeyboardTex help_page;
    MenuSwitches switches;
    MenuNote note;
    LetterGrid letters; // while a pad writes a name

    // Where it stands.
    ScreenPhase screen_phase = ScreenPhase::MENU;
    std::uint32_t help_at = 0; // tick at which TO_HELP or FROM_HELP began
    MenuLaunch launch;
    FocusItem focus;          // of a pad
    bool focus_shown = false; // a pad was used last
    unsigned leave_until = 0; // until this tick a second B leaves
    bool running = true;      // false at the end of a frame ends the loop
};

// Brings all that was made for the output's size to the one that it has now: text and mouse at
// once, pictures when the size has settled. Afterwards the menu is as if opened at that size.
void fit_menu(MenuScreen& menu, unsigned now);
// Loads and renders all that the menu shows. What is missing is reported and left out.
void set_up_menu(MenuScreen& menu, bool load_music);
ThumbMaker thumb_maker(MenuScreen const& menu);

SwitchPlaces switch_places(MenuScreen const& menu);

// One event, at the time that it is handled.
void handle_menu_event(MenuScreen& menu, SDL_Event const& event, unsigned now);
// An event watch of SDL, for which `userdata` is the MenuScreen. Layouts have "?" on many keys,
// mostly with Shift, and only text tells which; outside of the names text is heard no longer than
// Shift is held, so that an input method gets no key of the menu.
int hear_text_with_shift(void* userdata, SDL_Event* event);
// Nothing while a launch runs.
void start_launch(MenuScreen& menu, unsigned now);
// Once a frame. The result is how far the screen has gone to black, 0..1.
float advance_launch(MenuScreen& menu, unsigned now);
// Draws the frame of the phase and moves the phase on when its time has run.
void draw_menu_phase(MenuScreen& menu, float fade, unsigned now);
