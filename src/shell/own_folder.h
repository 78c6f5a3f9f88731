#pragma once

// The player's own game folder: links to art/, music/, sounds/ and to each track that came with the
// game, and room for the player's own tracks, pictures, input.conf and the menu's thumbnails.
//
// What the player has put there is never touched: only links that an earlier start has made are
// renewed or taken away. The file ".links" tells them: the version and the data folder of the last
// start. An own track hides the game's track of the same slot, as a slot has only one. Where not
// everybody may make links, the folder has only what is the player's own.

#include <filesystem>

// Makes the folder or brings its links up to date with `data`, an absolute path. False if the file
// system gives no folder or no links.
bool refresh_own_folder(std::filesystem::path const& own, std::filesystem::path const& data);
