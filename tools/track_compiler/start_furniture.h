#pragma once

// What stands beside the goal line of every course: a flag at each of its ends and a banner with
// the course's name. Nothing hangs over the road, where it would hide the cars.

#include "track_compiler/course.h"
#include "track_compiler/road_field.h"
#include "track_compiler/theme.h"
#include "world/track.h"

// Adds to the course's items. A course without room for a banner goes without one.
void add_start_furniture(Course& course, Theme const& theme, Track const& track,
                         RoadField const& field);
