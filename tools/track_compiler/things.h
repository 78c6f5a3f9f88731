#pragma once

// The look of the things beside the road, seen from above, with the light from one side.

#include "track_compiler/course.h"
#include "track_compiler/theme.h"

#include <cstdint>

// What a thing contributes to one pixel.
struct Dab {
    Colour colour;
    double alpha = 0.0; // 0 outside the thing
    bool glows = false; // with a light of its own, by night
};

// `offset` is the pixel's place from the thing's middle, in cells.
Dab natural_thing(Theme const& theme, SceneryItem const& item, Point offset);

// `front` is 1 if the road is to the right of the thing's length and -1 if to its left.
Dab built_thing(Theme const& theme, SceneryItem const& item, Point offset, double front);

bool is_natural(SceneryKind kind);

// A number of 0..1 of the thing's own.
double whim(SceneryItem const& item, std::uint32_t what);
