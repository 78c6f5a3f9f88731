#pragma once

// The tracks on the menu: the row of thumbnails of slots 1 to 5, the extra thumbnail of a hidden
// track that slides in at its end, and which track is chosen.

#include "screens/menu_layout.h"
#include "screens/track_thumb.h"

#include <SDL.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Ticks are SDL_GetTicks milliseconds, 0 for none.
struct MenuTracks {
    std::vector<TrackThumb> thumbs; // the row, by slot
    int selected_row = -1;          // index into the row, -1 for none
    int selected_track = 0;         // the chosen slot, 0 for none: nothing can be launched then
    int extra_slot = 0;             // 0, or the slot 6..9 on show as the extra thumbnail
    TrackThumb extra_thumb;         // outlives extra_slot until it has slid out
    std::uint32_t slide_at = 0;     // the extra thumbnail began to come or to go
    std::uint32_t swap_at = 0;      // it began to appear
    bool swapping = false;          // it took the place of another one
    std::array<SDL_Rect, ROW_SLOTS> from_rects{}; // where the row stood before that
    std::array<bool, 10> has_track{};             // by slot: there is a track file
    std::string failed_picture;                   // the name of a track whose thumbnail failed
    bool have_best = false;                       // the best laps could be read
    std::map<int, BestLap> best;                  // by slot
};

// How the row is drawn at this moment.
struct TrackFactors {
    TrackThumb const* extra = nullptr;
    float slide = 0.0F; // 0..1 the extra thumbnail has come so far; 2..1 it is leaving
    float extra_alpha = 0.0F;
    float swap_t = 0.0F; // share of the way from from_rects
    SDL_Rect const* from_rects = nullptr;
};

// Chooses a thumbnail of the row; an extra one is withdrawn.
void pick_row(MenuTracks& tracks, std::size_t row, unsigned now);
// Chooses the extra thumbnail that is on show.
void pick_extra(MenuTracks& tracks);
// What the keys 1 to 9 do: 1 to 5 choose in the row, 6 to 9 bring that slot's thumbnail up.
void pick_digit(MenuTracks& tracks, int digit, SDL_Rect const& view, ThumbMaker const& maker,
                unsigned now);

// Ends what has run its time: an extra thumbnail that has left is released.
TrackFactors track_factors(MenuTracks& tracks, unsigned now);
// True while no extra thumbnail is on show.
bool is_at_rest(TrackFactors const& factors);
// Where the thumbnails stand, for the eye and for the mouse: the row's, and behind them the extra
// one's from its coming to its leaving.
std::vector<SDL_Rect> row_rects(std::vector<TrackThumb> const& thumbs, TrackFactors const& factors,
                                SDL_Rect const& view);
// The same at this moment.
std::vector<SDL_Rect> track_rects(MenuTracks& tracks, SDL_Rect const& view, unsigned now);
