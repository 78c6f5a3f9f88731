#pragma once

// What people and cars leave on the ground: lettering, the goal line, grid boxes, skid marks.

#include "track_compiler/painter.h"
#include "track_compiler/picture.h"

void paint_letterings(PaintSource const& source, Picture const& picture);
void paint_skids(PaintSource const& source, Picture const& picture);

// The chequered line on the grid's goal cells, and boxes for the cars behind it.
void paint_goal(PaintSource const& source, Picture const& picture);
