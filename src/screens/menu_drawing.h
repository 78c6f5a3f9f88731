#pragma once

// The parts of a menu frame, for menu_render alone. Each draws one block in its place of the view.

#include "screens/menu_layout.h"
#include "screens/menu_model.h"
#include "screens/menu_tracks.h"
#include "screens/name_field.h"
#include "screens/sparkle.h"
#include "screens/track_thumb.h"

#include <SDL.h>

#include <vector>

constexpr SDL_Color GOLD{255, 215, 80, 255};
constexpr SDL_Color DIM{150, 165, 195, 255};
constexpr SDL_Color RED_NAME{235, 95, 85, 255};
constexpr SDL_Color BLUE_NAME{95, 160, 255, 255};

// What all blocks of a frame share.
struct MenuFrame {
    SDL_Renderer* renderer = nullptr;
    int W = 0; // logical size
    int H = 0;
    SDL_Rect view{};
    unsigned now = 0;
};

// The thumbnail row of a frame, worked out before it is drawn.
struct TrackRow {
    std::vector<TrackThumb> const& thumbs;
    int selected_row = -1;
    TrackFactors factors;
};

void draw_mode_block(MenuFrame const& frame, GameMode const& mode);
void draw_name_rows(MenuFrame const& frame, PlayerNames const& names);
// The row and, if the best laps could be read, the chosen track's best lap under it.
void draw_track_row(MenuFrame const& frame, TrackRow const& row, bool have_best);
void draw_start_button(MenuFrame const& frame, StartButton& button, MenuCursor const& cursor,
                       bool track_chosen);
