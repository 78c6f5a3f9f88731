#pragma once

// Which of the nine slots in the player's own tracks folder a track goes to. A file there that did
// not come from the same course is never written over: the file ".built" in that folder tells which
// course each of ours came from, and by the grid's fingerprint whether it still is the same track.

#include <filesystem>
#include <string>

struct SlotChoice {
    int slot = 0;                      // 0 for none
    std::string problem = {};          // why there is none
    std::filesystem::path before = {}; // the track that the same course made last time, if any
    std::string hides = {};            // name of the game's track that gives way, if any
};

// The slot for the track NAME made from the course at `course`, an absolute path. `wanted` is 1 to
// 9, or 0 for any: then the one that it had before, an empty one, or the last that only holds a
// track of the game's. `data` is the game's data folder, whose tracks are linked from `tracks`.
SlotChoice choose_slot(std::filesystem::path const& tracks, std::filesystem::path const& data,
                       std::filesystem::path const& course, std::string const& name, int wanted);

// Remembers that `track`, a file name, was made from `course`. False if that cannot be written;
// what was remembered before stands then.
bool remember_built(std::filesystem::path const& tracks, std::filesystem::path const& course,
                    std::filesystem::path const& track);
