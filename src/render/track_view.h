#pragma once

// One player's view of the world: the raster drawing of a track and the order in which a view is
// drawn. Screen positions are logical pixels, world positions cells.

#include "base/player.h"
#include "base/sdl_handles.h"
#include "world/geometry.h"
#include "world/track.h"

// Pixels per cell: PIXELS_PER_CELL times the zoom.
double world_scale();

// The cell size in pixels that a track is drawn at by the most patient renderer.
int wished_pixels_per_cell(Track const& track);
// What PIXELS_PER_CELL is set to for a track that may be drawn at `pixels` a cell.
int drawing_scale(int pixels);

// The largest cell size in pixels that the track may be drawn at with this renderer, at least 1.
int pixels_per_cell_for(Track const& track, SDL_Renderer* renderer);

// Bounds of ZOOM_LEVEL: at the lower one the whole track just fits a view of `view_w` x 720.
constexpr int ZOOM_MAX = 8;
int zoom_min(Track const& track, int view_w);

// Draws the grid into a texture; empty on failure. `out_w`, `out_h` receive its size in pixels,
// also when creation fails.
TextureHandle render_build_track_texture(SDL_Renderer* renderer, Track const& track, int* out_w,
                                         int* out_h);

// Where a place of the world, in cells, shows in a view whose camera looks at `eye`.
Vec2 point_in_view(SDL_Rect const& viewport, Track const& track, Vec2 eye, Vec2 place);

// Draws one view into `view.viewport`. `texture` (of `tex_w` x `tex_h` pixels, stretched over the
// grid) may be null; `ghost` is null when none is to show.
void render_viewport(SDL_Renderer* renderer, SDL_Texture* texture, int tex_w, int tex_h,
                     Track const& track, PlayerView const& view, CarState const& car,
                     PlayerView const& other_view, CarState const& other_car,
                     CarState const* ghost);
