#pragma once

// A car against the walls. A wall is any cell that is not passable and a car is a point; the
// wall's direction is read from the open cells around the contact.

#include "world/car_state.h"
#include "world/track.h"

struct Audio;
struct Player;

// True if the cell under the car (position cut towards zero) is not passable.
bool car_on_impassable(CarState const& car, Track const& track);

// Takes the tick back and turns it into a bounce: `before` is the car as it stood before the tick,
// `player_index` 0 for red and 1 for blue. Requests the thump and clears `in_wall`.
void handle_wall_hit_alt(Player& player, Track const& track, CarState const& before, Audio& audio,
                         int player_index);

// The most open of 24 directions from the car, in radians. False, with `*angle` untouched, if
// every one of them is blocked within a cell.
bool find_open_dir(Player const& player, Track const& track, double* angle);

// Moves a car that is stuck 0.06 cells into the open. True if it was moved.
bool slide_out_of_stuck(Player& player, Track const& track);
