#pragma once

// Track files: finding them, reading them, and what a track is called.

#include "world/track.h"

#include <array>
#include <filesystem>
#include <functional>
#include <string>

// Reads a .trk file. True if it gave a complete track, which then replaces `track` whole; on
// false `track` is unchanged. Memory stays in proportion to the rows that the file really holds.
bool load_track(std::string const& path, Track& track);

// Calls `visit` with the slot, 1..9, and the path of each track file in the folder "tracks", in the
// folder's own order; not at all if it cannot be opened.
void visit_track_files(
    std::function<void(int slot, std::filesystem::path const& path)> const& visit);

// The track files of the folder "tracks" by slot 1..9; an empty string for an empty slot. Index 0
// is never used.
std::array<std::string, 10> discover_tracks();

// The file's stem without its leading "N_".
std::string track_name_from_path(std::string const& path);
