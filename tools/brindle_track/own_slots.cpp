#include "brindle_track/own_slots.h"

#include "platform/files.h"
#include "world/track_file.h"

#include <array>
#include <fstream>
#include <map>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr char const* NOTE = ".built";

// Course to the file name of its track. A line holds both, the name first: it has no tab.
std::map<fs::path, fs::path> read_built(fs::path const& tracks) {
    std::map<fs::path, fs::path> built;
    std::ifstream file(tracks / NOTE);
    for (std::string line; std::getline(file, line);) {
        std::size_t const tab = line.find('\t');
        if (tab != std::string::npos) {
            built[to_path(line.substr(tab + 1))] = to_path(line.substr(0, tab));
        }
    }
    return built;
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
    std::map<fs::path, fs::path> const built = read_built(tracks);
    auto const last = built.find(course);
    if (last != built.end() && is_there(tracks / last->second)) choice.before = last->second;
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

void remember_built(fs::path const& tracks, fs::path const& course, fs::path const& track) {
    std::map<fs::path, fs::path> built = read_built(tracks);
    built[course] = track;
    std::ofstream file(tracks / NOTE);
    for (auto const& [from, made] : built) {
        // What has been taken away since may come back as a foreign file of the same name.
        if (is_there(tracks / made)) file << to_text(made) << '\t' << to_text(from) << '\n';
    }
}
