#pragma once

// One whole frame of the menu. All that a frame shows comes in through the parameters; the small
// animations that a frame moves on live in the start button and the sparkles.

#include "screens/menu_layout.h"
#include "screens/menu_model.h"
#include "screens/name_field.h"
#include "screens/sparkle.h"
#include "screens/track_thumb.h"

#include <SDL.h>

#include <functional>
#include <vector>

// Draws and presents a frame on a logical surface of W x H. `header` is the title art of
// `img_w` x `img_h` pixels: without it only background, credits, help button and cursor show.
// `fade` is 0 for the plain frame to 1 for black. The four values behind it are those of
// TrackFactors. `more` draws into the frame what lies between the menu's blocks and the cursor.
void render_menu(SDL_Renderer* renderer, TextureHandle const& header, int img_w, int img_h, int W,
                 int H, MenuLabel const& heading_mode, MenuLabel const& heading_names,
                 MenuLabel const& heading_tracks, GameMode const& mode, PlayerNames const& names,
                 std::vector<TrackThumb> const& thumbs, int selected_row, bool have_best,
                 StartButton& start, bool track_chosen, MenuLabel const& credits,
                 MenuCursor const& cursor, SparkleFx& sparkle, unsigned now,
                 MenuLabel const& help_label, TextureHandle const& help_ring, bool help_hover,
                 float fade, TrackThumb const* extra, float slide, float extra_alpha, float swap_t,
                 SDL_Rect const* from_rects,
                 std::function<void(SDL_Rect const& view)> const& more = {});

// The night-blue gradient over w x h pixels.
void draw_bg_gradient(SDL_Renderer* renderer, int w, int h);
// The gradient's texture is kept from frame to frame: to be called before its renderer goes.
void release_bg_gradient();
