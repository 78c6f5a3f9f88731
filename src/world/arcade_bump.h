#pragma once

// Contact of the two cars in arcade mode: oriented boxes, a push apart that respects the walls, an
// impulse with restitution and friction, and a spin from where the hit lands.

#include "world/car_state.h"
#include "world/track.h"

struct Audio;

extern double arcade_restitution; // bounce along the contact normal, 0..1
extern double arcade_friction;    // sideways impulse at most this share of the normal one
extern double arcade_spin;        // factor from turning moment to change of heading

// Lets two cars collide. False, and nothing changed, if their boxes do not overlap. `sound_a` and
// `sound_b` index `audio.car_feed`; above 1 means no sound.
bool arcade_car_bump(CarState& a, CarState& b, int sound_a, int sound_b, Track const& track,
                     Audio& audio);
