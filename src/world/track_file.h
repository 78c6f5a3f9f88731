#pragma once

// Track files: finding them, reading them, and what a track is called.

#include "world/track.h"

#include <array>
#include <string>

// Reads a .trk file. True if it gave a complete track, which then replaces `track` whole; on
// false `track` is unchanged. Memory stays in proportion to the rows that the file really holds.
bool load_track(std::string const& path, Track& track);

// The track files of the folder "tracks" by slot 1..9; an empty string for an empty slot. Index 0
// is never used.
std::array<std::string, 10> discover_tracks();

// The file's stem without its leading "N_".
std::string track_name_from_path(std::string const& path);
