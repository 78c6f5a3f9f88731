#pragma once

// A car against the walls. A wall is any cell that is not passable and a car is a point; the
// wall's direction is read from the open cells around the contact.

#include "base/car_state.h"
#include "world/track.h"

// True if the cell under the car (position cut towards zero) is not passable.
bool car_on_impassable(CarState const& car, Track const& track);

// Takes the tick back and turns it into a bounce: `before` is the car as it stood before the tick.
// Clears `in_wall`. The loudness of the hit, 0.2 to 1.
float bounce_off_wall(CarState& car, Track const& track, CarState const& before);

// The most open of 24 directions from the car, in radians. False, with `*angle` untouched, if
// every one of them is blocked within a cell.
bool find_open_dir(CarState const& car, Track const& track, double* angle);

// Moves a car that is stuck 0.06 cells into the open. True if it was moved.
bool slide_out_of_stuck(CarState& car, Track const& track);
