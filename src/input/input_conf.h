#pragma once

// The gamepad file.

#include "input/gamepad.h"
#include "input/key_bindings.h"

#include <string>
#include <string_view>

// From a file's text. A record keeps its values for a section that is missing.
void read_input_conf(std::string_view text, GamepadConfig& red, GamepadConfig& blue);
// The same of a file. False if it cannot be opened.
bool load_input_conf(std::string const& path, GamepadConfig& red, GamepadConfig& blue);

// The keys in force: the built-in ones, and in their place those that the file names for a control.
// What it cannot have is told on standard error with line and cause, and is left out. In a section
// with a device the words of `accelerate` and `brake` that hold a digit are the pad's buttons.
KeyBindings load_own_keys(std::string const& path);
KeyBindings read_own_keys(std::string_view text);

// The number that starts at the first digit; -1 without one or if it does not fit an int.
int parse_indexed(std::string const& text);
