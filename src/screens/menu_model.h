#pragma once

// What the menu shows besides the tracks and the names: the chooser of the game mode, the start
// button and the cursor.

#include "screens/menu_label.h"

#include <SDL.h>

#include <array>
#include <cstdint>

// Lap counts that the menu offers for a race.
constexpr std::array<int, 3> LAP_COUNTS{3, 5, 10};

constexpr int MODE_PRACTICE = 0;
constexpr int MODE_RACE = 1;

// The chooser of practice or race.
struct GameMode {
    MenuLabel practice;
    MenuLabel race;
    MenuLabel arrow; // stands before the chosen row
    int selected = MODE_PRACTICE;
    MenuLabel laps_caption;
    std::array<MenuLabel, LAP_COUNTS.size()> lap_options;
    int lap_index = 0; // into LAP_COUNTS
};

// Ticks are SDL_GetTicks milliseconds, 0 for none.
struct StartButton {
    TextureHandle tex;            // null if the art failed
    double aspect = 1.0;          // width over height
    std::uint32_t pressed_at = 0; // the launch
    std::uint32_t shown_at = 0;   // the first frame with a track chosen
    float hover = 0.0F;           // 0..1
    std::uint32_t last_tick = 0;  // `now` of the previous frame
};

// The software cursor: the mouse is in relative mode, and the cursor lives in logical pixels.
struct MenuCursor {
    TextureHandle tex; // null if the art failed
    SDL_Rect src{};    // 0, 0 and the texture's pixel size
    float x = 0.0F;    // the hot spot: the picture's top left corner
    float y = 0.0F;
    std::uint32_t moved_at = 0;
    bool visible = false; // false until the mouse has moved once
};

// Whether the cursor shows at this moment: a second after its last movement it hides.
inline bool cursor_shows(MenuCursor const& cursor, unsigned now) {
    return cursor.visible && now - cursor.moved_at < 1000;
}
