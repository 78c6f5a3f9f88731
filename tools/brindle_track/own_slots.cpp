#include "brindle_track/own_slots.h"

#include "platform/files.h"
#include "records/lap_file.h"
#include "records/replace_file.h"
#include "world/track_file.h"

#include <array>
#include <fstream>
#include <map>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr char const* NOTE = ".built";

struct Built {
    fs::path track;   // its file name
    std::string grid; // the fingerprint
};

// What each course made last. A line holds all three, the course last: it may have tabs.
std::map<fs::path, Built> read_built(fs::path const& tracks) {
    std::map<fs::path, Built> built;
    std::ifstream file(tracks / NOTE);
    for (std::string line; std::getline(file, line);) {
        std::size_t const grid = line.find('\t') + 1;
        std::size_t const course = line.find('\t', grid) + 1;
        if (grid == 0 || course == 0) continue;
        built[to_path(line.substr(course))] = {to_path(line.substr(0, grid - 1)),
                                               line.substr(grid, course - grid - 1)};
    }
    return built;
}

// Of the grid in the file; empty for what is none.
std::string grid_in(fs::path const& file) {
    Track track;
    return load_track(to_text(file), track) ? fingerprint_text(grid_fingerprint(track)) : "";
}

// What holds each slot.
struct Holders {
    std::array<fs::path, 10> own;     // a track of the player's, except the one to be made anew
    std::array<fs::path, 10> shipped; // one of the game's, as a link where there are links
};

void find_shipped(fs::path const& data, Holders& holders) {
    std::error_code error;
    for (fs::directory_iterator entry(data / "tracks", error), end; !error && entry != end;
         entry.increment(error)) {
        fs::path const name = entry->path().filename();
        std::size_t const slot = slot_of_file(name);
        if (slot != 0 && holders.own[slot].empty()) holders.shipped[slot] = name;
    }
}

Holders find_holders(fs::path const& tracks, fs::path const& data, fs::path const& before) {
    Holders holders;
    std::error_code error;
    for (fs::directory_iterator entry(tracks, error), end; !error && entry != end;
         entry.increment(error)) {
        fs::path const name = entry->path().filename();
        std::size_t const slot = slot_of_file(name);
        if (slot == 0 || name.stem() == before.stem()) continue;
        std::error_code no_link;
        bool const linked = fs::read_symlink(entry->path(), no_link) == data / "tracks" / name;
        (linked ? holders.shipped : holders.own)[slot] = name;
    }
    if (!links_for_everybody()) find_shipped(data, holders);
    return holders;
}

// The hidden slots, 9 to 6, before those that the menu shows.
int last_shipped(Holders const& holders) {
    for (std::size_t slot = 9; slot >= 1; --slot) {
        if (holders.own[slot].empty()) return static_cast<int>(slot);
    }
    return 0;
}

int first_empty(Holders const& holders) {
    for (std::size_t slot = 1; slot <= 9; ++slot) {
        if (holders.own[slot].empty() && holders.shipped[slot].empty()) {
            return static_cast<int>(slot);
        }
    }
    return 0;
}

} // namespace

SlotChoice choose_slot(fs::path const& tracks, fs::path const& data, fs::path const& course,
                       std::string const& name, int wanted) {
    SlotChoice choice;
    std::map<fs::path, Built> const built = read_built(tracks);
    auto const last = built.find(course);
    // Of the same name there may be a friend's by now.
    if (last != built.end() && !last->second.grid.empty() &&
        grid_in(tracks / last->second.track) == last->second.grid) {
        choice.before = last->second.track;
    }
    Holders const holders = find_holders(tracks, data, choice.before);

    choice.slot = wanted;
    if (wanted == 0 && !choice.before.empty()) choice.slot = to_text(choice.before)[0] - '0';
    if (choice.slot == 0) choice.slot = first_empty(holders);
    if (choice.slot == 0) choice.slot = last_shipped(holders);
    if (choice.slot == 0) {
        choice.problem =
            "all nine slots hold tracks of your own: take one of them out of " + to_text(tracks);
        return choice;
    }
    auto const slot = static_cast<std::size_t>(choice.slot);
    if (!holders.own[slot].empty()) {
        choice.problem =
            "slot " + std::to_string(choice.slot) + " holds " +
            to_text(tracks / holders.own[slot]) +
            ", which was not made from this course: take another slot than that of \"" + name +
            "\"";
        choice.slot = 0;
    } else if (!holders.shipped[slot].empty()) {
        choice.hides = track_name_from_path(to_text(holders.shipped[slot]));
    }
    return choice;
}

bool remember_built(fs::path const& tracks, fs::path const& course, fs::path const& track) {
    std::map<fs::path, Built> built = read_built(tracks);
    built[course] = {track, grid_in(tracks / track)};
    std::string text;
    for (auto const& [from, made] : built) {
        if (!is_there(tracks / made.track)) continue; // taken away since
        text += to_text(made.track) + '\t' + made.grid + '\t' + to_text(from) + '\n';
    }
    return replace_file(to_text(tracks / NOTE), {text});
}
