#pragma once

// The track's grid, from the same field that the picture is painted from.

#include "track_compiler/course.h"
#include "track_compiler/ground_plan.h"
#include "world/track.h"

#include <string>

// The grid with start and goal line, and its derived fields. The start angle and the goal's ends
// are set as the game will find them when it loads the file.
Track make_grid(Course const& course, Centreline const& line, RoadField const& field,
                double rim_width);

// The text of the track's file.
std::string track_file_text(Track const& track);
