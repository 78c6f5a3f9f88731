#pragma once

// The file that remembers the two names between runs, a line each, in the preference folder.

#include <array>
#include <string>

// The names of the last visit, red then blue, or the defaults if the file does not hold two.
std::array<std::string, 2> load_player_names();
void save_player_names(std::string const& red, std::string const& blue);
