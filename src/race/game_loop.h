#pragma once

// The race screen: real time becomes fixed steps of 10 ms, and both views are drawn from states
// interpolated between the last two of them.

#include "base/fonts.h"
#include "base/race_switches.h"
#include "base/sdl_handles.h"
#include "input/gamepad.h"
#include "input/key_bindings.h"
#include "input/pads.h"
#include "race/race_events.h"
#include "race/race_notices.h"
#include "race/race_rumble.h"
#include "race/simulation.h"
#include "screens/menu_loop.h"
#include "world/track.h"

#include <array>
#include <cstdint>
#include <string>

struct Audio;

class GameLoop {
public:
    // Stores the arguments; window, renderer, audio and fonts outlive the loop. Opens nothing.
    GameLoop(SDL_Window* window, SDL_Renderer* renderer, Audio& audio, Fonts const& fonts,
             bool fast, bool arcade, bool ai, bool ai2, bool menu, bool help_screen, int track,
             int race_laps);
    GameLoop(GameLoop const&) = delete;
    GameLoop& operator=(GameLoop const&) = delete;

    // Sets up and runs frames until the program is to end.
    void run();
    // One displayed frame.
    void frame();

    // Events and keys (race_keys.cpp).
    void poll_events();

    // The two small displays that answer a key (race_messages.cpp). The toast is a big centred
    // line that fades out, the OSD a small coloured one at (x, y) in logical pixels.
    static constexpr std::uint32_t TOAST_MS = 1000;
    void show_toast(char const* text, std::uint32_t ms = TOAST_MS);
    void draw_toast(char const* text, unsigned now);
    void draw_osd(TTF_Font* font, char const* text, int x, int y, SDL_Color color);

    // Setting up races (race_setup.cpp).
    void initial_setup();
    void go_to_menu();
    // True if `path` is now the current track; else the old one stands.
    bool load_into(std::string const& path);
    // Loads and shows the current track's picture, if it has one.
    void load_picture_of_track();
    void reset_players();
    void clear_records();
    // Puts the race back to its start in the mode it is in, countdown included. `clear` forgets
    // the best laps in memory.
    void restart_race(bool clear, bool keep_music);
    // That, by a player's wish: best laps stay, and so does the music but for game over's.
    void restart_from_key();
    // Ends the race for both players and starts the high-score music.
    void enter_game_over(std::uint32_t now);
    [[nodiscard]] RaceSwitches switches() const { return {arcade, ai_red, ai_blue}; }
    bool rebuild_track_texture();
    void refresh_track_tex();
    void apply_viewports();

    // What is heard beside the cars (race_music.cpp).
    void apply_music();
    // Until the next race's own cue: GO, or the practice's start.
    void silence_race_music();
    char const* pick_race_music();
    // Has the songs that may come next decoded ahead.
    void expect_music();
    void start_game_over_music();

    SDL_Window* window;
    SDL_Renderer* renderer;
    Audio& audio;
    Fonts const& fonts;
    Track track;
    Simulation sim;
    TextureHandle raster_tex; // the grid, always there after a load
    int raster_w = 0;
    int raster_h = 0;
    TextureHandle image_tex; // the track's picture, may be null
    int image_w = 0;
    int image_h = 0;
    bool show_image = false;
    bool picture_waits = false;       // during set-up: it is loaded when the track is settled
    SDL_Texture* shown_tex = nullptr; // aliases one of the two
    int shown_w = 0;
    int shown_h = 0;
    std::string track_path;
    std::string failed_track; // the name of one that should have been loaded last; empty for none
    int track_slot = 0;       // 1..9, 0 for none: records are only kept for a slot
    std::array<std::string, 10> track_files;
    bool arcade; // these three: first by the command line, then by the menu's switches
    bool ai_red;
    bool ai_blue;
    bool ghost_visible = false;
    bool running = true;
    bool fade_in_pending = false;
    bool opt_fast;
    bool opt_quick;
    bool opt_menu;
    bool opt_help_screen;
    int opt_track;
    int opt_race_laps;
    int view_mode = 0; // 0 split, 1 red alone, 2 blue alone
    bool fullscreen = true;
    std::uint32_t acc_ms = 0; // real time not yet turned into steps
    std::uint32_t last_ticks = 0;
    std::uint32_t fade_in_tick = 0;
    static constexpr float DEFAULT_MUSIC_VOLUME = 0.3F;
    float music_volume = DEFAULT_MUSIC_VOLUME;
    bool music_enabled = true;
    bool car_sound_enabled = true;
    int music_index = -1;
    int next_music_index = 0; // what will be picked: the first race of a run has the first song
    bool vsync = true;
    bool show_fps = false;
    double fps = 0.0;
    std::string osd_text;
    std::uint32_t osd_until = 0;
    std::string toast_text;
    std::uint32_t toast_until = 0;
    double phys_scale;
    KeyBindings keys = builtin_keys();
    std::array<Gamepad, 2> gamepads; // as input.conf names them
    TitleArt menu_title;             // of the last menu
    Pads pads;                       // those that need no setup, where it names none
    RaceRumble rumble;
    bool records_wait = false;    // since game over: to be seen reach the disk
    bool rematch_focused = false; // by a pad at game over, else the way to the menu
    std::array<bool, 512> pressed_keys{};
    RaceEvents events; // of the rules just run, until they are reported
    RaceNotices notices;
};
