#pragma once

// The computer driver: stateless and reactive. Fifteen rays look for the open way that leads
// forwards along the lap; the other car is chased when it is near, in sight and not behind.

#include "base/car_state.h"
#include "world/track.h"

// The controls for `car` at this moment. Reads both cars and the track, keeps nothing.
Input drive(CarState const& car, CarState const& other, Track const& track);

// How far a ray from (x, y) stays on passable cells, in steps of 3 cells, at most `limit`.
double clear_distance(Track const& track, double x, double y, double angle, double limit);
