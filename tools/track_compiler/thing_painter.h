#pragma once

// The things beside the road with their shadows, and the lamps' light at night.

#include "track_compiler/painter.h"
#include "track_compiler/picture.h"

void paint_shadows(PaintSource const& source, Picture const& picture);
void paint_things(PaintSource const& source, Picture const& picture);

// Takes the daylight away, as dark as the theme says, and lights what stands near a lamp.
void paint_night(PaintSource const& source, Picture const& picture);
