#pragma once

// Open ways from place to place, as lanes and forks are described.

#include "track_compiler/geometry.h"

#include <vector>

// The same way with its corners cut off, but with its own ends.
std::vector<Point> smoothed_way(std::vector<Point> way);
