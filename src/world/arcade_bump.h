#pragma once

// The collision of car_bump.h with its sound.

#include "world/car_bump.h"

struct Audio;

// bump_cars, heard from both cars: `sound_a` and `sound_b` index `audio.car_feed`, any other
// number means no sound. False, and nothing changed, if their boxes do not overlap.
bool arcade_car_bump(CarState& a, CarState& b, int sound_a, int sound_b, Track const& track,
                     Audio& audio);
