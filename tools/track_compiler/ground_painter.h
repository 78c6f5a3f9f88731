#pragma once

// Everything that lies flat and has no paint on it: road, kerbs, rim and land.

#include "track_compiler/land_painter.h"
#include "track_compiler/painter.h"
#include "track_compiler/theme.h"

// Where the light comes from, on the ground; of length 1.
Point towards_light(Theme const& theme);

// The ground's colour at a pixel's centre, by daylight. `areas` are the course's.
Colour ground_colour(PaintSource const& source, Land const& land, Point at);
