#pragma once

// The colour of everything that lies flat beside the road.

#include "track_compiler/area_field.h"
#include "track_compiler/lane_field.h"
#include "track_compiler/painter.h"
#include "track_compiler/theme.h"
#include "track_compiler/tone_field.h"

// What is known of the land, measured before it is painted.
struct Land {
    AreaField areas;
    LaneField lanes;
    ToneField tones;
};

Land measure_land(PaintSource const& source);

// `edge` is the place's distance from the road's edge in cells.
Colour land_colour(PaintSource const& source, Land const& land, Point at, double edge);
