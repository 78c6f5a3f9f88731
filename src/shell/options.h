#pragma once

// The command line.

#include <cstdint>
#include <string>

struct Options {
    bool fast = false;           // skip intro and menu into a practice run
    bool arcade = false;         // cars bump, nothing is recorded; skip intro and menu
    bool ai = false;             // the same, red drives itself
    bool ai2 = false;            // the same, both drive themselves
    bool menu = false;           // skip the intro only
    bool finish = false;         // play the finish sequence and end
    bool winner = false;         // show the winner overlay and end
    bool gamepad_test = false;   // joystick test and end
    bool help_screen = false;    // open the menu with the help screen up
    bool test_ghost = false;     // ghost sprite tuning screen and end
    bool win = false;            // a window instead of the full screen
    std::int32_t track = 0;      // slot to start on, 1..9, 0 for none
    std::int32_t race_laps = 0;  // laps of a quick race, 1..99, 0 for none
    std::string highscores_name; // write that player's report and end
    std::string highscores_out;  // path of that report
};

// Reads the arguments. Ends the process with status 0 for help and the key listing; warns on
// standard error of what it ignores.
Options parse_cmdline(int argc, char** argv);

void print_usage(char const* program);
void print_all_keybindings(char const* program);
