#pragma once

// The computer driver: stateless and reactive. Fifteen rays look for the open way that leads
// forwards along the lap; the other car is chased when it is near, in sight and not behind.

#include "world/car_state.h"
#include "world/track.h"

struct Player;

// The controls for `me` at this moment. Reads both cars and the track, keeps nothing.
Input ai_drive(Player const& me, Player const& other, Track const& track);

// How far a ray from (x, y) stays on passable cells, in steps of 3 cells, at most `limit`.
double clear_distance(Track const& track, double x, double y, double angle, double limit);
