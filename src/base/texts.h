#pragma once

// What the game says on the screen beside its standing words, all in one place.

#include <array>

namespace texts {

constexpr std::array<char const*, 4> COUNTDOWN{"3", "2", "1", "GO!"};
constexpr char const* WRONG_WAY = "WRONG WAY";
constexpr char const* OUT_OF_TIME = "OUT OF TIME";
// For the second car, once the first is home. The face's blank is narrow, and between two tall
// letters the outline fills what there is of it.
constexpr char const* SECONDS_LEFT = "%u s  left";

// The result at game over.
inline constexpr char const* COMPUTER = "Computer";         // in place of a name
constexpr std::array<char const*, 2> COLORS{"Red", "Blue"}; // of a player without a name
constexpr char const* WINS = "%s wins";
constexpr char const* TOTAL = "TOTAL";
constexpr char const* BEST_LAP = "BEST LAP";
constexpr char const* GAP = "GAP";
constexpr char const* LAP_BEHIND = "1 lap";
constexpr char const* LAPS_BEHIND = "%d laps";
constexpr char const* TOO_LATE = "out of time";
constexpr char const* STOPPED = "stopped";
constexpr std::array<char const*, 3> RECORDS{"", "personal best", "lap record"};
constexpr char const* REMATCH = "press BACKSPACE for a rematch";

// On the menu.
constexpr char const* PICTURE_FAILED = "The picture of %s failed to load";
constexpr char const* NO_TRACKS =
    "No track has a picture here. Tracks belong into this folder, as 1_Name.trk and 1_Name.png:";

// The ghost's times, in seconds: ahead is less. A split is as exact as a lap. The minus is as wide
// as the plus.
constexpr char const* GHOST_GAP = "%s%.2f";
constexpr char const* GHOST_SPLIT = "%d/4  %s%.3f";
constexpr char const* LESS = "\u2212";
constexpr char const* MORE = "+";

// Toasts for what else answers on the standard output alone.
constexpr char const* VOLUME = "Music %.0f%%";
constexpr char const* ZOOM_BOUND = "Zoom at its Bound";
constexpr char const* RESTART = "Restart";
constexpr std::array<char const*, 3> VIEWS{"Split View", "Red alone", "Blue alone"};
constexpr char const* FLYING_START_ON = "Flying Start ON";
constexpr char const* FLYING_START_OFF = "Flying Start OFF";
constexpr char const* TRACK_PICTURE = "Track Picture";
constexpr char const* TRACK_GRID = "Track Grid";
constexpr char const* NO_PICTURE = "No Picture of this Track";
constexpr char const* NO_TRACK = "No Track in Slot %d";
constexpr char const* TRACK_FAILED = "Track %d failed to load";
constexpr char const* NAMED_TRACK_FAILED = "%s failed to load";
constexpr std::array<char const*, 2> PAD_LOST{"Red's Pad is lost", "Blue's Pad is lost"};
constexpr char const* RECORD_LOST = "Record not saved: %s";
constexpr char const* GHOST_LOST = "Ghost not saved: %s";

} // namespace texts
