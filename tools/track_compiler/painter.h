#pragma once

// Paints a track's picture, PICTURE_SCALE pixels a cell. What looks drivable is decided by
// surface_at alone, so that the picture agrees with the grid.

#include "base/sdl_handles.h"
#include "track_compiler/course.h"
#include "track_compiler/ground_plan.h"
#include "track_compiler/theme.h"
#include "world/track.h"

#include <vector>

constexpr int PICTURE_SCALE = 2; // pixels a cell

// Everything there is to paint. All records are lent for the call.
struct PaintSource {
    Course const& course;              // areas of other ground, lettering, names
    Theme const& theme;                // how the place looks
    Centreline const& line;            // the road: width, curvature, kerbs
    RoadField const& main_road;        // where each cell lies with respect to the road alone
    RoadField const& field;            // the same with the forks, where cells lie nearer to one
    Track const& track;                // the finished grid, with goal line and start
    std::vector<double> const& racing; // by sample: how far right of the line rubber lies, cells
    std::vector<SceneryItem> const& items; // all solid things, back to front
};

// The centre of a picture's pixel in cells of the grid.
inline Point pixel_place(int x, int y) {
    return {(x + 0.5) / PICTURE_SCALE, (y + 0.5) / PICTURE_SCALE};
}

// The finished picture in PIXEL_FORMAT, opaque; null if there is no memory for it.
SurfaceHandle paint_track(PaintSource const& source);
