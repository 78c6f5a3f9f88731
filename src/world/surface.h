#pragma once

// What the ground does to the car that stands on it.

#include "world/car_physics.h"
#include "world/track.h"

// The effect of the cell under `car`; `rumble` receives 0..1 for the sound. Positions are cut
// towards zero to cells; outside the grid there is rumble and no resistance.
SurfaceEffect sample_surface(Track const& track, CarState const& car, float& rumble);
