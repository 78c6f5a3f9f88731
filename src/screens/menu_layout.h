#pragma once

// Where everything on the menu stands, in logical pixels. The drawing and the mouse both work from
// these places, so that what is seen is what is hit. The menu is laid out in one 16:9 rectangle,
// the view.

#include "screens/menu_model.h"
#include "screens/name_field.h"
#include "screens/track_thumb.h"

#include <SDL.h>

#include <cstddef>
#include <vector>

// Places as shares of the view's width or height.
constexpr float MODE_X = 0.26F;  // centre of the mode block
constexpr float NAMES_X = 0.72F; // left edge of the names, centre of their heading
constexpr float TRACKS_X = 0.5F;
constexpr float HEADING_Y = 0.4F; // of the modes and the names
constexpr float TRACKS_HEADING_Y = 0.6F;
constexpr float FIRST_ROW_Y = 0.48F;  // "Practice" and the red name
constexpr float SECOND_ROW_Y = 0.53F; // "Race" and the blue name
constexpr float START_Y = 0.47F;
constexpr float START_HEIGHT = 0.08F;
constexpr double CURSOR_HEIGHT = 0.035; // of the mouse, a share of the whole output's height
constexpr float THUMBS_Y = 0.77F;

// The row has at most this many thumbnails, and so many rectangles glide when the extra one is
// exchanged.
constexpr int ROW_SLOTS = 5;

// The largest 16:9 rectangle centred in W x H.
SDL_Rect menu_view(int W, int H);
int place_x(SDL_Rect const& view, float share);
int place_y(SDL_Rect const& view, float share);
// Vertical centre of row 0 or 1 of the mode block and of the names.
int row_y(SDL_Rect const& view, int row);

// Whether a point lies in the box; its right and bottom edges are outside.
bool inside(SDL_Rect const& box, float x, float y);

// The columns of the mode block: the arrow, a gap, the labels.
struct ModeBlock {
    int x = 0;       // where the arrow stands
    int label_x = 0; // where "Practice" and "Race" begin
    int w = 0;
};
ModeBlock mode_block(GameMode const& mode, SDL_Rect const& view);
// The box of a mode's row under the mouse, 0 practice, 1 race.
SDL_Rect mode_row_box(GameMode const& mode, SDL_Rect const& view, int row);
// The rectangle of the laps caption; `options` receives those of the three lap options.
SDL_Rect laps_row(GameMode const& mode, SDL_Rect const& view, SDL_Rect* options);
// The box of a lap option under the mouse: its rectangle with a margin all round.
SDL_Rect lap_option_box(GameMode const& mode, SDL_Rect const& view, std::size_t option);

MenuLabel const& name_label(PlayerNames const& names, int row);
// Left edge of a name's label, "red:" or "blue:".
int name_label_x(PlayerNames const& names, SDL_Rect const& view, int row);
// The box of a name's row under the mouse: from the label to the view's right edge.
SDL_Rect name_row_box(PlayerNames const& names, SDL_Rect const& view, int row);

// Side of the square help button in logical pixels.
int help_button_size(MenuLabel const& help_label);
SDL_Rect help_button_box(MenuLabel const& help_label, SDL_Rect const& view);
// The start button at rest.
SDL_Rect start_button_box(StartButton const& button, SDL_Rect const& view);

// Appends a rectangle for each thumbnail: the row is centred, all stand on one line.
void track_row_layout(std::vector<TrackThumb> const& thumbs, SDL_Rect const& view,
                      std::vector<SDL_Rect>& out);
// The same for the row with `extra` behind it.
void track_row_layout(std::vector<TrackThumb> const& thumbs, TrackThumb const& extra,
                      SDL_Rect const& view, std::vector<SDL_Rect>& out);
// Puts `rect` a share of the way between two places; its size stays.
void glide(SDL_Rect& rect, SDL_Rect const& from, SDL_Rect const& to, float share);
