#pragma once

// All things that stand beside the road: those that the description places, and those that it and
// the theme leave to chance. Chance is the same at every build.

#include "track_compiler/course.h"
#include "track_compiler/fault.h"
#include "track_compiler/road_field.h"
#include "track_compiler/theme.h"

#include <cstdint>
#include <vector>

// Everything placed, back to front. A thing that would stand on the road, its kerbs or its rim
// goes into `faults`; scattered things keep clear by themselves.
std::vector<SceneryItem> place_scenery(Course const& course, Theme const& theme,
                                       Centreline const& line, RoadField const& field,
                                       Faults& faults);

bool inside(GroundArea const& area, Point place);

// Does any part of the item lie nearer to the road's edge than `border`?
bool touches_road(SceneryItem const& item, RoadField const& field, double border);

// 1 in the middle of a grove, 0 in the open; the same for all courses.
double grove(Point place);

// A number of 0..1 of the patch's own.
double area_whim(GroundArea const& area);

// A number of 0..1 that looks like chance and depends on nothing but its arguments.
double chance(std::uint32_t a, std::uint32_t b, std::uint32_t c);
