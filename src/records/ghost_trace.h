#pragma once

// Recordings of laps: their files, and the ghost's pose for the picture being drawn.

#include "race/player.h"

#include <string>
#include <vector>

// ASCII letters, digits and '-' stay, every other byte becomes '_'; an empty string gives "_".
std::string sanitize_filename(std::string const& s);

// Name of the ghost file of a player on a track, within the preference folder.
std::string ghost_file_name(std::string const& player_name, std::string const& track_path);

// Writes a lap; true if the whole file was written. An older file stands until then.
bool save_ghost_trace(std::string const& path, std::vector<CarState> const& frames,
                      unsigned ticks_per_step);
// Reads a lap; false, with `frames` empty, for a file that is missing, cut short or damaged.
// `ticks_per_step` may be null.
bool load_ghost_trace(std::string const& path, std::vector<CarState>& frames,
                      unsigned* ticks_per_step);

// The ghost's pose at this moment of the lap: only x, y and heading are set, save at the last
// frame. False if there is none to show.
bool pick_ghost(Player const& player, double sim_ms, double step_ms, double alpha, CarState* out);
