#pragma once

// The camera that follows a car, within the bounds of the track.

#include "base/player.h"
#include "world/track.h"

// Once a displayed frame. `dt` in seconds, `view_w` x `view_h` the visible area in cells.
void update_camera(PlayerView& view, CarState const& car, Track const& track, double dt,
                   double view_w, double view_h);
