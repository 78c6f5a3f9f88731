#pragma once

// Making and measuring sound: MP3 files made on the spot by `lame`, and what a run of samples
// holds.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

using Samples = std::vector<std::int16_t>;

Samples sine(double hz, double seconds, double level, int rate, double phase = 0.0);
// Writes a mono MP3 at `rate` Hz. Throws if there is no `lame` or it fails.
void write_mp3(std::string const& path, Samples const& samples, int rate);

// Level of one frequency in the samples: a sine of amplitude A at exactly `hz` gives A.
double level_at(std::span<std::int16_t const> samples, double hz, int rate);
double rms(std::span<std::int16_t const> samples);
int peak(std::span<std::int16_t const> samples);
