#pragma once

// Track files: finding them, reading them, and what a track is called.
//
// A .trk file is text: a line with the grid's width and height, then `height` lines of `width`
// characters, a cell each. One `*` and at least one `!` must be among them:
//
//     .  road           *  road: the start cell          !  road: the goal line
//     r  red kerb       w  white kerb, both passable up to 4 cells from the road
//     b  barrier        g  grass, both walls; so is every other character
//
// A line that is too short is filled up with grass, one that is too long is cut; a file with fewer
// lines than it says is no track, and what follows the last of them is not looked at. The goal line
// is the box of all `!`; the cars start square to it, towards `*`.

#include "world/track.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

// Reads a .trk file. True if it gave a complete track, which then replaces `track` whole; on
// false `track` is unchanged. Memory stays in proportion to the rows that the file really holds.
bool load_track(std::string const& path, Track& track);
// The same of a file's bytes; `name` is what a missing marker is told of.
bool read_track(std::istream& file, std::string const& name, Track& track);

// The slot of a file "N_name.trk" or its picture; 0 for any other.
std::size_t slot_of_file(std::filesystem::path const& path);

struct TrackFile {
    std::size_t slot; // 1..9
    std::filesystem::path path;
};

// Where the picture of a track file lies, whether or not there is one.
std::string picture_of_track(std::string const& path);

// The track files of the folder "tracks" in the folder's own order; none if it cannot be opened.
// Several may claim the same slot. Those of the player's own place come first, and where they claim
// a slot, no other does.
std::vector<TrackFile> find_track_files();

// The track files by slot 1..9; an empty string for an empty slot. Index 0 is never used.
std::array<std::string, 10> discover_tracks();

// The file's stem without its leading "N_".
std::string track_name_from_path(std::string const& path);
