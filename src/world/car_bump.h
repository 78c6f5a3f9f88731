#pragma once

// Contact of the two cars: oriented boxes, a push apart that respects the walls, an impulse with
// restitution and friction, and a spin from where the hit lands.

#include "base/car_state.h"
#include "world/track.h"

extern double arcade_restitution; // bounce along the contact normal, 0..1
extern double arcade_friction;    // sideways impulse at most this share of the normal one
extern double arcade_spin;        // factor from turning moment to change of heading

struct Bump {
    bool touching = false; // the cars' boxes overlapped
    float loudness = 0.0F; // of the hit, 0.2 to 1; 0 if neither car took one
};

// Lets two cars collide. Nothing is changed if their boxes do not overlap.
Bump bump_cars(CarState& a, CarState& b, Track const& track);
