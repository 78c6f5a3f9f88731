#pragma once

// The gamepad file.

#include "input/gamepad.h"

#include <string>

// False if the file cannot be opened. A record keeps its values for a section that is missing.
bool load_input_conf(std::string const& path, GamepadConfig& red, GamepadConfig& blue);

// Without spaces, tabs, carriage returns and line feeds at both ends.
std::string trim(std::string const& text);
// The number that starts at the first digit; -1 without one or if it does not fit an int.
int parse_indexed(std::string const& text);
