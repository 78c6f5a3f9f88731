#pragma once

// How loud sound is to an ear, after EBU R128: K-weighted, quiet gaps left out. One channel, as the
// game plays it.

#include <cstdint>
#include <span>

struct Loudness {
    double integrated = -100.0; // LUFS over the whole
    double momentary = -100.0;  // LUFS of the loudest 400 ms
    double true_peak = -100.0;  // dBTP
};

// Sound too short or too quiet for a measure keeps its -100.
Loudness loudness_of(std::span<std::int16_t const> samples, int rate);
