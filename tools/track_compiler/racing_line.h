#pragma once

// The way that quick drivers take, as far as the picture needs it: where rubber is laid.

#include "track_compiler/centreline.h"

#include <vector>

// For every sample of the line how far to the right of it the racing line runs, in cells.
std::vector<double> racing_offsets(Centreline const& line);
