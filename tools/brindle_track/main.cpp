// brindle-track: tracks of the player's own, from a page of text to a race on it. Exit status 0, 1
// for a course that cannot be raced or a file that cannot be written, 2 for a wrong call.

#include "brindle_track/first_course.h"
#include "brindle_track/own_slots.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/programs.h"
#include "records/replace_file.h"
#include "shell/game_folder.h"
#include "shell/own_folder.h"
#include "track_compiler/make_track.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int FAULT = 1;
constexpr int WRONG_CALL = 2;
constexpr std::size_t LONGEST_NAME = 60; // bytes; the name becomes a part of ghosts' file names

struct Call {
    std::string verb;
    std::string subject; // a track's name or a course's file
    std::string theme = "coast";
    int slot = 0; // 1..9, 0 for any
    std::vector<std::string> for_the_game;
};

int show_usage(std::FILE* stream, int status) {
    std::fputs("Brindle Run - tracks of your own\n"
               "\n"
               "Usage: brindle-track new NAME [--theme THEME]\n"
               "           write NAME.course, a first course, in this folder\n"
               "       brindle-track build COURSE [--slot 1-9]\n"
               "           check it, and put grid and picture among your own tracks\n"
               "       brindle-track try COURSE [--slot 1-9] [-- OPTIONS]\n"
               "           build it, and start the game on it (with these options of the game's)\n",
               stream);
    return status;
}

// Fills `call`; false for anything that is not understood.
bool read_call(std::vector<std::string> const& words, Call& call) {
    if (words.size() < 2) return false;
    call.verb = words[0];
    call.subject = words[1];
    bool const makes_new = call.verb == "new";
    if (!makes_new && call.verb != "build" && call.verb != "try") return false;
    for (std::size_t i = 2; i < words.size(); ++i) {
        bool const has_value = i + 1 < words.size();
        if (call.verb == "try" && words[i] == "--") {
            call.for_the_game.assign(words.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                     words.end());
            return true;
        }
        if (makes_new && words[i] == "--theme" && has_value) {
            call.theme = words[++i];
        } else if (!makes_new && words[i] == "--slot" && has_value && words[i + 1].size() == 1 &&
                   words[i + 1][0] >= '1' && words[i + 1][0] <= '9') {
            call.slot = words[++i][0] - '0';
        } else {
            return false;
        }
    }
    return true;
}

int fail(std::string const& reason) {
    std::fprintf(stderr, "brindle-track: %s\n", reason.c_str());
    return FAULT;
}

// Themes beside the course come before the game's.
std::vector<fs::path> theme_folders(fs::path const& course, fs::path const& data) {
    return {from_root(course).parent_path(), data / "themes"};
}

bool is_theme(std::string const& theme, std::vector<fs::path> const& folders) {
    return std::any_of(folders.begin(), folders.end(), [&](fs::path const& folder) {
        return is_there(folder / to_path(theme + ".theme"));
    });
}

// Their names, each behind a blank.
std::string themes_in(fs::path const& folder) {
    std::string names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.append(1, ' ').append(to_text(entry->path().stem()));
    }
    return names;
}

// A name that can stand in a file's name, in quotes and on the menu.
bool is_usable(std::string const& name) {
    return !name.empty() && name.size() <= LONGEST_NAME && name[0] != '.' && can_name_file(name) &&
           std::none_of(name.begin(), name.end(),
                        [](char c) { return c == '\\' || c == '"' || (c >= 0 && c < ' '); });
}

int make_new(Call const& call, fs::path const& data) {
    if (!is_usable(call.subject)) return fail("a track cannot be called \"" + call.subject + "\"");
    std::string const path = call.subject + ".course";
    if (!is_theme(call.theme, theme_folders(to_path(path), data))) {
        return fail("there is no theme \"" + call.theme +
                    "\"; there are:" + themes_in(data / "themes"));
    }
    if (is_there(to_path(path))) return fail(path + " is there already");
    if (!replace_file(path, {first_course(call.subject, call.theme)})) {
        return fail(path + " cannot be written");
    }
    std::printf("Wrote %s. Change it as you like; then: brindle-track try \"%s\"\n", path.c_str(),
                path.c_str());
    return 0;
}

void show_step(char const* step) {
    std::printf("%s ...\n", step);
    std::fflush(stdout);
}

// Moves the finished track from `made` among the player's own; its file name is `name`.
bool put_in_place(fs::path const& made, fs::path const& tracks, std::string const& name,
                  fs::path const& before) {
    std::error_code error;
    for (char const* extension : {".png", ".trk"}) {
        if (error) return false;
        fs::path whole = made;
        fs::rename(whole += extension, tracks / to_path(name + extension), error);
    }
    if (error) return false;
    if (before.empty() || before.stem() == to_path(name)) return true;
    for (char const* extension : {".png", ".trk"}) {
        fs::remove(tracks / fs::path(before).replace_extension(extension), error);
    }
    return true;
}

// Builds the course among the player's own tracks; the slot in `call` becomes the one it went to.
int build(Call& call, fs::path const& data) {
    std::optional<Course> course = read_course(call.subject);
    if (!course) return FAULT;
    std::error_code error;
    fs::path const source = fs::weakly_canonical(to_path(call.subject), error);
    if (error) return fail(call.subject + ": " + error.message());
    std::string const name = course->name.empty() ? to_text(source.stem()) : course->name;
    if (!is_usable(name)) return fail("a track cannot be called \"" + name + "\"");
    fs::path const own = own_game_folder();
    if (!refresh_own_folder(own, data)) return fail(to_text(own) + " cannot be made");
    SlotChoice const choice = choose_slot(own / "tracks", data, source, name, call.slot);
    if (choice.slot == 0) return fail(choice.problem);
    call.slot = choice.slot;

    // Made beside the tracks, so that the game never meets half a track.
    fs::path const workshop = own / ".workshop";
    fs::create_directories(workshop, error);
    bool const made = make_track(*std::move(course), call.subject, theme_folders(source, data),
                                 to_text(workshop / to_path(name)), show_step);
    std::string const file = std::to_string(choice.slot) + "_" + name;
    bool const placed =
        made && put_in_place(workshop / to_path(name), own / "tracks", file, choice.before);
    fs::remove_all(workshop, error);
    if (!made) return FAULT;
    if (!placed) return fail(to_text(own / "tracks" / to_path(file)) + ".trk cannot be written");
    if (!remember_built(own / "tracks", source, to_path(file + ".trk"))) {
        return fail(file + " is built, but " + to_text(own / "tracks" / ".built") +
                    ", which tells where it came from, cannot be written");
    }
    refresh_own_folder(own, data);
    std::printf("Built %s\n", to_text(own / "tracks" / to_path(file + ".trk")).c_str());
    if (!choice.hides.empty()) {
        std::printf("It takes the place of %s for as long as it is there.\n", choice.hides.c_str());
    }
    std::printf("Press %d in the menu to race on it.\n", choice.slot);
    return 0;
}

// The game beside this program, or where both were installed, or wherever the shell finds it.
std::string find_game() {
    fs::path const here = program_folder();
    std::string game = program_file("brindle-run");
    for (fs::path const& place : {here / game, here / "../games" / game}) {
        if (!here.empty() && is_there(place)) return to_text(place.lexically_normal());
    }
    return game;
}

int start_game(Call const& call) {
    std::string const game = find_game();
    std::vector<std::string> words = {game};
    if (call.for_the_game.empty()) words.emplace_back("-fast");
    words.insert(words.end(), call.for_the_game.begin(), call.for_the_game.end());
    words.push_back(std::to_string(call.slot));
    std::error_code error;
    fs::current_path(own_game_folder(), error);
    std::fflush(stdout);
    Handover const gone = hand_over(std::move(words));
    return gone.started ? gone.status : fail("the game cannot be started: " + game);
}

} // namespace

int main(int argc, char** argv) {
    join_console();
    std::vector<std::string> const words = words_of_call(argc, argv);
    if (words == std::vector<std::string>{"--help"}) return show_usage(stdout, 0);
    Call call;
    if (!read_call(words, call)) return show_usage(stderr, WRONG_CALL);
    std::optional<fs::path> const data = find_game_data();
    if (!data) return fail("no game data found: install the package brindle-run-data");
    if (call.verb == "new") return make_new(call, *data);
    int const status = build(call, *data);
    return status == 0 && call.verb == "try" ? start_game(call) : status;
}
