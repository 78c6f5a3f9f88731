#pragma once

// The menu's small pictures of the tracks. Reducing a track's picture takes time, so the reduced
// one is kept in a cache folder under the working directory and made again only when the source
// is newer or the display needs another height. The game's own tracks come with pictures reduced
// for common displays, in thumbs/HEIGHT/ beside tracks/, which go into the cache as they are.
// Tracks are known here by their slot, the digit that their file name begins with.

#include "records/best_laps.h"
#include "screens/menu_label.h"

#include <array>
#include <map>
#include <memory>
#include <string>

// One entry on the menu. Movable, not copyable.
struct TrackThumb {
    TextureHandle tex; // linear scaling, blended
    int w = 0;         // logical pixels
    int h = 0;
    int slot = 0;
    MenuLabel name;
    MenuLabel holder; // who holds the best lap
    MenuLabel time;   // the best lap in seconds
};

// What thumbnails are made with. The small font may be null: then they have no labels.
struct ThumbMaker {
    SDL_Renderer* renderer = nullptr;
    double menu_scale = 1.0;
    TTF_Font* small_font = nullptr;
    std::map<int, BestLap> const* best = nullptr; // by slot, null without a table
};

// Paths of the track pictures by slot; an empty string where a slot has no track or no picture.
std::array<std::string, 10> discover_track_pngs();

// Height of the thumbnails in output pixels.
int thumb_height(double menu_scale);

// The picture at `path`, reduced to `height` output pixels if it is higher, from the cache where
// that is fresh. `w` and `h` receive the logical size at `scale` output pixels a logical pixel.
// False, with `out` empty and both sizes 0, if the picture does not load.
bool load_track_thumb(SDL_Renderer* renderer, std::string const& path, int height, double scale,
                      TextureHandle& out, int* w, int* h);

// Writes the picture at `path`, reduced to `height` as for the cache, to the file `to`. False if it
// is not that high, or one of the two files fails.
bool save_track_thumb(std::string const& path, int height, std::string const& to);

// Makes the entry of a slot from its picture, in place of what `thumb` was. The result is that of
// load_track_thumb; the labels come in any case.
bool build_track_thumb(ThumbMaker const& maker, int slot, std::string const& path,
                       TrackThumb& thumb);
