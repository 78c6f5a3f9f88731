#pragma once

// What the menu switches for the next race beside its mode. The command line sets the first state.
struct RaceSwitches {
    bool bumps = false;        // the cars collide
    bool computer_red = false; // who drives
    bool computer_blue = false;
};

// A race is only recorded where two players drive by themselves and past each other.
inline bool is_recorded(RaceSwitches const& switches) {
    return !switches.bumps && !switches.computer_red && !switches.computer_blue;
}
