#pragma once

// Refuses a course that could not be raced. Every fault names the line of the description that a
// person would have to change.

#include "track_compiler/centreline.h"
#include "track_compiler/course.h"
#include "track_compiler/fault.h"
#include "track_compiler/road_field.h"
#include "world/track.h"

// What shows on the centre line alone: a road off the grid, or one that runs into itself.
// `border` is what lies beyond the road's edge and must be on the grid as well.
void check_road(Course const& course, Centreline const& line, double border, Faults& faults);

// Lettering that something runs through: an edge of the road or of a patch, or a lane.
void check_letterings(Course const& course, RoadField const& field, double border, Faults& faults);

// What shows on the grid: start, run-up and goal line.
void check_grid(Course const& course, Centreline const& line, Track const& track, Faults& faults);
