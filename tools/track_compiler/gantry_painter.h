#pragma once

#include "track_compiler/painter.h"
#include "track_compiler/picture.h"

// The bridge over the road behind the goal line.
void paint_gantry(PaintSource const& source, Picture const& picture);
