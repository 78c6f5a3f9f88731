#pragma once

// Where the player's own things lie, if not in the working directory: tracks, input.conf, and the
// menu's thumbnails. Set once, when the game enters its folder.

#include "platform/files.h"

#include <string>
#include <system_error>

// A folder's path with a separator behind it; empty where the working directory is that place.
inline std::string OWN_PLACE; // NOLINT(*-avoid-non-const-global-variables)

// The player's own file of that name, or else the one in the working directory.
inline std::string own_or_here(std::string const& name) {
    std::error_code ignored;
    bool const own =
        !OWN_PLACE.empty() && std::filesystem::exists(to_path(OWN_PLACE + name), ignored);
    return own ? OWN_PLACE + name : name;
}
