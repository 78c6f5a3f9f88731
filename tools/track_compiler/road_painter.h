#pragma once

#include "track_compiler/painter.h"
#include "track_compiler/theme.h"

// The road's surface with its wear, its repairs and its painted edges.
Colour road_colour(PaintSource const& source, Point at, RoadPlace const& place);
