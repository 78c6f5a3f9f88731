#pragma once

// The table of best laps, one small text file in the preference folder. Each operation reads the
// file whole, and a new record replaces it whole: what is on disk is always a complete table. The
// file is the only state, and a person may edit it:
//
//     [Gadget]
//     1: 41.250 Gadget.coast.trace
//     3: 63.118
//
//     [Pixie]
//     1: 40.982 Pixie.coast.trace
//
// A line gives a slot, the seconds and, if the lap's ghost was kept, its file name. Lines that make
// no sense are skipped without a word.
//
// A new record names its ghost before the ghost's own file is written. If the program ends between
// the two, the table names a ghost that is missing or is that of the lap before: the one plays as
// no ghost, the other as a slower one, and the next record sets it right.

#include <limits>
#include <map>
#include <string>
#include <string_view>

// One player's best lap on one slot.
struct BestEntry {
    double seconds = 0.0;   // whole milliseconds as the game writes them
    std::string trace_file; // file name of the lap's ghost, empty if none
};

inline bool operator==(BestEntry const& a, BestEntry const& b) {
    return a.seconds == b.seconds && a.trace_file == b.trace_file;
}

// The best lap of one slot over all players.
struct BestLap {
    std::string holder;
    double seconds = std::numeric_limits<double>::infinity();
};

// Player name (ordered by bytes) to slot to entry.
using BestLapTable = std::map<std::string, std::map<int, BestEntry>>;

// Full path of `file` in the user's preference folder; a relative path if there is no such folder.
// The folder is asked for once in the life of the process; what a program that came to a sudden end
// left in it is then set right, unless another game is running.
std::string pref_path(char const* file);
constexpr char const* BEST_LAPS_FILE = "best_lap_times.txt";

// The table that a file's text gives. Lines are read as pieces of at most 255 bytes.
BestLapTable parse_best_lap_table(std::string_view text);
// The text of a table's file.
std::string best_lap_table_text(BestLapTable const& table);

// Replaces `table` by the file's content; false, and an empty table, if it cannot be opened. Names
// longer than 127 bytes are cut, names end at the first ']', ghost names hold at most 159 bytes.
bool load_best_lap_table(BestLapTable& table);
// True if the table was written; the old file stands until the new one is complete. A failure says
// so on standard error.
bool save_best_lap_table(BestLapTable const& table);

// Where the table is there but cannot be read to its end.
inline constexpr char const* TABLE_UNREADABLE = "the old table cannot be read";

// Offers a lap to the table. 0 nothing changed, 1 a personal best, 2 a lap record: faster than
// everybody on that slot, an equal time of another player denies it. The rank stands even if the
// table cannot be saved; `trouble`, if given, receives the reason then. Needs a name and a slot of
// at least 1.
int record_best_lap(std::string const& name, int slot, double seconds,
                    std::string const& trace_file, std::string* trouble = nullptr);
// That player's ghost file on that slot, or an empty string.
std::string best_lap_trace(std::string const& name, int slot);
// The best lap of every slot; among equal times the name that sorts first. False if there is no
// table.
bool load_best_laps(std::map<int, BestLap>& best);
