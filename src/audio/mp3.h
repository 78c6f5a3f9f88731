#pragma once

// MP3 decoding with libmpg123, which also resamples and mixes down: whatever the file holds, the
// result has the device's rate and one channel. Files are decoded whole, on the game thread.

#include <cstdint>
#include <vector>

// The whole file as mono samples at `rate` Hz. Empty on failure, with one line on standard error;
// a file that breaks off in the middle gives that line too, and what was decoded until then.
std::vector<std::int16_t> decode_mp3_mono(char const* path, int rate);
