#pragma once

// How fast the music's gain goes to its target. The mixer takes a share of the distance with each
// sample, so that a fade never quite ends.

#include "audio/audio.h"

constexpr double FADE_SPAN = 4.6; // time constants until a fade counts as done: 1 % is left

// Samples per second of the device, or what stands in where none has told its own.
inline int device_rate(Audio const& audio) {
    return audio.sample_rate > 0 ? audio.sample_rate : DEFAULT_SAMPLE_RATE;
}

// The step of a fade that is done after `seconds`.
inline float fade_step_of(Audio const& audio, double seconds) {
    return static_cast<float>(FADE_SPAN / (seconds * device_rate(audio)));
}
