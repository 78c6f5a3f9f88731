#pragma once

// The colour of everything that lies flat beside the road.

#include "track_compiler/area_field.h"
#include "track_compiler/painter.h"
#include "track_compiler/theme.h"

// `edge` is the place's distance from the road's edge in cells.
Colour land_colour(PaintSource const& source, AreaField const& areas, Point at, double edge);
