#pragma once

// What the help tells that is not the same for every player.

#include "base/race_switches.h"
#include "input/key_bindings.h"

#include <array>
#include <string>

struct HelpFacts {
    KeyBindings keys = builtin_keys(); // in force
    RaceSwitches switches;
    bool rumble = true;
    std::array<std::string, 2> pads; // what red and blue drive with; empty for none
};
