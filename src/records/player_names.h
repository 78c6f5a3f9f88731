#pragma once

// The file that remembers the two names between runs, a line each, in the preference folder.

#include <array>
#include <string>
#include <string_view>

// What a file's text says, or the defaults if it does not hold two names.
std::array<std::string, 2> parse_player_names(std::string_view text);

// The names of the last visit, red then blue, or the defaults if the file does not hold two.
std::array<std::string, 2> load_player_names();
// Replaces the file whole or not at all.
void save_player_names(std::string const& red, std::string const& blue);
