#pragma once

// MP3 decoding with libmpg123.

#include <cstdint>
#include <vector>

// The whole file as mono samples at `rate` Hz; empty on failure, with one line on standard error.
std::vector<std::int16_t> decode_mp3_mono(char const* path, int rate);
