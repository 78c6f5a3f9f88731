#pragma once

// The things beside the road with their shadows.

#include "track_compiler/painter.h"
#include "track_compiler/picture.h"

void paint_shadows(PaintSource const& source, Picture const& picture);
void paint_things(PaintSource const& source, Picture const& picture);

// Once more whatever has a light of its own.
void paint_glowing_things(PaintSource const& source, Picture const& picture);
