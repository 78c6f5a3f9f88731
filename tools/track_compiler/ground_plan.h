#pragma once

// What every place of the course is made of: the one answer that both the grid and the picture
// are drawn from.

#include "track_compiler/centreline.h"
#include "track_compiler/road_field.h"

enum class Surface { road, kerb_red, kerb_white, rim, land };

// `rim_width` is the depth in cells of what bounds the road.
Surface surface_at(Centreline const& line, RoadPlace const& place, double rim_width);
