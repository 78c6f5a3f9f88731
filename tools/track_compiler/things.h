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

// A pixel in the terms of a long thing: x along its longer side, y across it, from its middle.
struct Spot {
    double x = 0.0;
    double y = 0.0;
    double half_long = 0.0;
    double half_wide = 0.0;
    double outside = 0.0; // distance to its rectangle, negative within
    double light = 0.0;   // of a slope that falls towards +y, -1..1
};

Spot spot_of(Theme const& theme, SceneryItem const& item, Point offset);

// `offset` is the pixel's place from the thing's middle, in cells.
Dab natural_thing(Theme const& theme, SceneryItem const& item, Point offset);

// `front` is 1 if the road lies towards the spot's +y and -1 if not.
Dab built_thing(Theme const& theme, SceneryItem const& item, Point offset, double front);

// Measures of a banner, in cells.
constexpr double BANNER_LETTER = 10.0; // height of its letters
constexpr double BANNER_WIDTH = 19.0;
constexpr double BANNER_END = 19.0; // from its end to the first letter

// The single things, for built_thing.
Dab house(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab shed(Theme const& theme, Spot const& spot);
Dab stand(Theme const& theme, Spot const& spot, double front);
Dab tent(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab pier(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab boat(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab parked_car(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab crane(Theme const& theme, Spot const& spot);
Dab digger(Theme const& theme, Spot const& spot);
Dab logs(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab flag(Spot const& spot);
Dab banner(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab board(Theme const& theme, SceneryItem const& item, Spot const& spot);
Dab fountain(Theme const& theme, SceneryItem const& item, Point offset);
Dab lighthouse(Theme const& theme, SceneryItem const& item, Point offset);

// Distance to a boat's hull, negative within.
double hull_distance(Spot const& spot);

bool is_natural(SceneryKind kind);
bool is_round(SceneryKind kind);

// A number of 0..1 of the thing's own.
double whim(SceneryItem const& item, std::uint32_t what);
