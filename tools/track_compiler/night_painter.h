#pragma once

#include "track_compiler/painter.h"
#include "track_compiler/picture.h"

// Turns the finished picture of a dark theme into night, with lamps and lit windows.
void paint_night(PaintSource const& source, Picture const& picture);
