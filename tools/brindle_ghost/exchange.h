#pragma once

// The player's side of sharing laps: what there is, one lap out, one lap in. The working directory
// is the folder that the game plays in. Each prints what it did, or why not on standard error, and
// returns the exit status.

#include <string>

// All records, a line each.
int list_records();

// Writes NAME's best lap on a track, given by name or slot, to the file at `path`.
int export_lap(std::string const& name, std::string const& track, std::string const& path);

// Takes over the lap in the file at `path` if it is faster than that player's own.
int import_lap(std::string const& path);
