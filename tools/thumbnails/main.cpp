// Makes the menu's thumbnails of a track's picture for the heights of common displays, so that the
// first menu does not have to:
//
//     thumbnails PICTURE FOLDER DISPLAY_HEIGHT...
//
// writes FOLDER/THUMBNAIL_HEIGHT/ with a picture of the same name for each display.

#include "base/screen.h"
#include "screens/track_thumb.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <span>

namespace fs = std::filesystem;

namespace {

bool make_thumbnail(fs::path const& picture, fs::path const& folder, int display_height) {
    int const height = thumb_height(static_cast<double>(display_height) / SCREEN_H);
    fs::path const place = folder / std::to_string(height);
    std::error_code ignored;
    fs::create_directories(place, ignored);
    fs::path const made = place / picture.filename();
    if (save_track_thumb(picture.string(), height, made.string())) return true;
    std::fprintf(stderr, "thumbnails: %s: %s\n", made.c_str(), SDL_GetError());
    return false;
}

} // namespace

int main(int argc, char** argv) {
    std::span<char*> const arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() < 4) {
        std::fputs("thumbnails PICTURE FOLDER DISPLAY_HEIGHT...\n", stderr);
        return 2;
    }
    for (char const* height : arguments.subspan(3)) {
        if (!make_thumbnail(arguments[1], arguments[2], std::atoi(height))) return 1;
    }
    return 0;
}
