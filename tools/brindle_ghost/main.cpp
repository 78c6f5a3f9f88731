// brindle-ghost: laps for friends to race against. Exit status 0, 1 for what could not be done, 2
// for a wrong call.

#include "brindle_ghost/exchange.h"
#include "platform/console.h"
#include "platform/files.h"
#include "shell/game_folder.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

int show_usage(std::FILE* stream, int status) {
    std::fputs(
        "Brindle Run - race each other's laps\n"
        "\n"
        "Usage: brindle-ghost list\n"
        "           show all records\n"
        "       brindle-ghost export NAME TRACK FILE\n"
        "           write NAME's best lap on TRACK (its name or slot) to FILE, for a friend\n"
        "       brindle-ghost import FILE\n"
        "           take over a friend's lap, if it is faster than theirs that is here\n",
        stream);
    return status;
}

} // namespace

int main(int argc, char** argv) {
    join_console();
    std::vector<std::string> const words = words_of_call(argc, argv);
    std::string const verb = words.empty() ? "" : words[0];
    if (verb == "--help") return show_usage(stdout, 0);
    // The file is meant from here, the tracks from where the game plays.
    std::string const file = words.size() < 2 ? "" : to_text(from_root(to_path(words.back())));
    bool const has_data = enter_game_folder();
    if (!has_data) std::fputs("brindle-ghost: no game data found: tracks have no names\n", stderr);
    if (verb == "list" && words.size() == 1) return list_records();
    if (verb == "export" && words.size() == 4) return export_lap(words[1], words[2], file);
    if (verb == "import" && words.size() == 2) return import_lap(file);
    return show_usage(stderr, 2);
}
