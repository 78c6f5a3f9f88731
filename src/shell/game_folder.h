#pragma once

// Where the game is played: the folder that art/, music/, sounds/, tracks/ and input.conf are found
// in, as paths relative to the working directory. Started in such a folder the game stays there.
// Started anywhere else, by a double click or a launcher, it goes to a folder of the player's own,
// which borrows from the data that came with the program (own_folder.h), or, where not everybody
// may make links, to that data itself, with the folder of the player's own looked into first
// (base/own_place.h).

#include <filesystem>
#include <optional>

// Where the running program lies; empty if the system does not tell.
std::filesystem::path program_folder();

// The player's own game folder, "game" in the preference folder; it need not exist.
std::filesystem::path own_game_folder();

// The folder of the data that came with the program: beside it, or where both were installed.
std::optional<std::filesystem::path> find_game_data();

// Makes the folder to play in the working directory. False, with the working directory as it was,
// if there is nothing to play with: the caller's fonts will not open.
bool enter_game_folder();

// Says on standard error and in a message box that there is nothing to play with, and what to do.
// Ends SDL: the process is about to end, too.
void tell_missing_data();
