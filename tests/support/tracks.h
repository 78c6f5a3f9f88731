#pragma once

// Small tracks for tests, read from text as the game reads them.

#include "world/track.h"

#include <string>
#include <vector>

// A track file's bytes: the head for these rows, then the rows.
std::string track_text(std::vector<std::string> const& rows);

// The track of these rows; needs a '*' and a '!'. Throws if it does not load.
Track track_from_rows(std::vector<std::string> const& rows);

// A hall of road, `width` x `height` cells within a rim of grass 10 cells thick, with the start
// cell and the goal line out of the way in its upper left corner.
Track make_hall(int width, int height);
constexpr int HALL_RIM = 10;
