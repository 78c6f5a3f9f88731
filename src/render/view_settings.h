#pragma once

// Process-wide settings of the race picture, below everything that draws by them.

#include <cstdint>

extern std::int32_t ZOOM_LEVEL; // quarter-octaves of zoom; 0 at start and after each track load
extern bool smooth_camera;      // panning camera instead of the one that snaps
extern bool fancy_ghost;        // ghosts wear `ghost_texture` instead of the car sprite

// 2 to the power of ZOOM_LEVEL / 4.
double zoom_factor();
