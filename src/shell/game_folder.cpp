#include "shell/game_folder.h"

#include "base/own_place.h"
#include "platform/files.h"
#include "records/best_laps.h"
#include "shell/own_folder.h"
#include "world/track_file.h"

#include <SDL.h>

#include <array>
#include <cstdio>
#include <system_error>

namespace fs = std::filesystem;

namespace {

bool has_fonts(fs::path const& folder) {
    std::error_code ignored;
    return fs::is_directory(folder / "art" / "fonts", ignored);
}

// Somebody's folder of pictures may be called "art", too; with race fonts in it, it is ours. Tracks
// alone are enough to ask for them here: what else is missing, the game says itself.
bool started_in_game_folder(std::optional<fs::path> const& data) {
    std::error_code ignored;
    fs::path const here = fs::current_path(ignored);
    if (fs::equivalent(here, own_game_folder(), ignored)) return false;
    // A place where double clicks start the game is nobody's choice.
    if (!links_for_everybody() && data && fs::equivalent(here, *data, ignored)) return false;
    return has_fonts(".") || !find_track_files().empty();
}

} // namespace

fs::path program_folder() {
    char* const base = SDL_GetBasePath();
    fs::path folder = to_path(base != nullptr ? base : "");
    SDL_free(base);
    return folder;
}

fs::path own_game_folder() {
    return to_path(pref_path("game"));
}

std::optional<fs::path> find_game_data() {
    fs::path const program = program_folder();
    std::array<fs::path, 3> const places = {
        program,
        program / ".." / "share" / "games" / "brindle-run", // wherever the whole was installed
        BRINDLE_DATA_DIR,
    };
    for (fs::path const& place : places) {
        std::error_code error;
        fs::path const folder = fs::canonical(place, error);
        if (!error && has_fonts(folder)) return folder;
    }
    return std::nullopt;
}

bool enter_game_folder() {
    std::optional<fs::path> const data = find_game_data();
    if (started_in_game_folder(data)) return true;
    if (!data) return false;
    fs::path const own = own_game_folder();
    bool const has_own = own.is_absolute() && refresh_own_folder(own, *data);
    bool const borrows = has_own && links_for_everybody();
    if (has_own && !borrows) OWN_PLACE = to_text(own / "");
    std::error_code error;
    // Where no links can be made, the data's folder has to do as it is.
    fs::current_path(borrows ? own : *data, error);
    return !error;
}

void tell_missing_data() {
    constexpr char const* WORDS =
        "Brindle Run found no game data: install the package brindle-run-data, or start the game "
        "in a folder that has art, music, sounds and tracks.";
    std::fprintf(stderr, "%s\n", WORDS);
    SDL_Quit(); // a window over the full screen would hide the box
    SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, "Brindle Run", WORDS, nullptr);
}
