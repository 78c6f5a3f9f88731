#pragma once

// The table of best laps, one small text file in the preference folder. Each operation reads the
// file whole, and a new record replaces it whole: what is on disk is always a complete table.

#include <functional>
#include <limits>
#include <map>
#include <string>

// One player's best lap on one slot.
struct BestEntry {
    double seconds = 0.0;
    std::string trace_file; // file name of the lap's ghost, empty if none
};

// The best lap of one slot over all players.
struct BestLap {
    std::string holder;
    double seconds = std::numeric_limits<double>::infinity();
};

// Player name (ordered by bytes) to slot to entry.
using BestLapTable = std::map<std::string, std::map<int, BestEntry>>;

// Full path of `file` in the user's preference folder.
std::string pref_path(char const* file);

// Replaces `table` by the file's content; false, and an empty table, if it cannot be opened.
bool load_best_lap_table(BestLapTable& table);
// True if the table was written; the old file stands until the new one is complete.
bool save_best_lap_table(BestLapTable const& table);

// Offers a lap to the table. 0 nothing changed, 1 a personal best, 2 a lap record.
int record_best_lap(std::string const& name, int slot, double seconds,
                    std::string const& trace_file);
// That player's ghost file on that slot, or an empty string.
std::string best_lap_trace(std::string const& name, int slot);
// The best lap of every slot; false if there is no table.
bool load_best_laps(std::map<int, BestLap>& best);
