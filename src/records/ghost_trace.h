#pragma once

// Recordings of laps: their files, and the ghost's pose for the picture being drawn.
//
// A ghost file is the number of ticks per 10 ms step (uint32, 1 to 1000), the number of frames
// (uint32, at most 10,000,000) and the frames as CarState lies in memory, 56 bytes each, all
// little-endian. Frame k stands k ticks after the lap's start. Bytes behind the last frame are not
// looked at. Nothing here prints: a ghost that cannot be saved is lost, one that cannot be loaded
// is no ghost.

#include "base/player.h"

#include <string>
#include <vector>

// ASCII letters, digits and '-' stay, every other byte becomes '_'; an empty string gives "_".
std::string sanitize_filename(std::string const& s);

// Name of the ghost file of a player on a track, within the preference folder.
std::string ghost_file_name(std::string const& player_name, std::string const& track_path);

// Writes a lap; true if the whole file was written. An older file stands until then. 0 ticks per
// step are written as 1.
bool save_ghost_trace(std::string const& path, std::vector<CarState> const& frames,
                      unsigned ticks_per_step);
// Reads a lap; false, with `frames` empty, for a file that is missing, cut short or damaged.
// `ticks_per_step` may be null. Memory is taken only for frames that the file really holds.
bool load_ghost_trace(std::string const& path, std::vector<CarState>& frames,
                      unsigned* ticks_per_step);

// False for a file that does not load or has holes, as a power cut leaves them.
bool ghost_trace_is_whole(std::string const& path);

// Only where the lap went, in cells, as far as the file tells: a file cut short gives the points
// before the cut, and a place that no grid has ends the list as well.
std::vector<SDL_FPoint> load_ghost_line(std::string const& path);

// The ghost's pose at this moment of the lap: only x, y and heading are set, save at the last
// frame, which is copied whole. `sim_ms` is the simulated clock, `step_ms` the length of a step,
// `alpha` how far the picture lies within the step, 0 to 1; the pose is one step behind the clock,
// like the cars as drawn. False if there is none to show.
bool pick_ghost(Player const& player, double sim_ms, double step_ms, double alpha, CarState* out);
