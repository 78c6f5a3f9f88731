#pragma once

#include "track_compiler/geometry.h"
#include "track_compiler/theme.h"

// Water `depth` cells from its shore.
Colour water_colour(Theme const& theme, Point at, double depth);

// What lies beside water: a beach, or where the theme builds quays, a wall. `land` is what would
// be there without it; `depth` is negative.
Colour shore_colour(Theme const& theme, Colour land, Point at, double depth);
