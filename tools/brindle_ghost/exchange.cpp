#include "brindle_ghost/exchange.h"

#include "platform/files.h"
#include "platform/keep_records.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/lap_file.h"
#include "records/replace_file.h"
#include "world/track_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace {

// A lap packs to a few kilobytes; one that hits walls all the way, to a few hundred.
constexpr std::uintmax_t LARGEST_FILE = 64 << 20;
constexpr std::size_t LONGEST_GHOST_NAME = 159; // bytes; the table of best laps holds no longer one

int fail(std::string const& reason) {
    std::fprintf(stderr, "brindle-ghost: %s\n", reason.c_str());
    return 1;
}

std::string seconds_text(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f s", seconds);
    return text.data();
}

std::string track_name(std::array<std::string, 10> const& tracks, int slot) {
    bool const known = slot >= 1 && slot <= 9 && !tracks[static_cast<std::size_t>(slot)].empty();
    return known ? track_name_from_path(tracks[static_cast<std::size_t>(slot)]) : "";
}

// The slot with that name, or of that digit; 0 for none.
int find_slot(std::array<std::string, 10> const& tracks, std::string const& wanted) {
    for (int slot = 1; slot <= 9; ++slot) {
        std::string const name = track_name(tracks, slot);
        if (!name.empty() && (wanted == name || wanted == std::to_string(slot))) return slot;
    }
    return 0;
}

std::optional<BestEntry> find_record(std::string const& name, int slot) {
    BestLapTable table;
    load_best_lap_table(table);
    auto const section = table.find(name);
    if (section == table.end()) return std::nullopt;
    auto const entry = section->second.find(slot);
    if (entry == section->second.end()) return std::nullopt;
    return entry->second;
}

// A file's bytes; nothing for what cannot be read or is far too large.
std::optional<std::string> read_file_whole(std::string const& path) {
    std::error_code error;
    std::uintmax_t const size = fs::file_size(to_path(path), error); // plain files only
    std::ifstream file(to_path(path), std::ios::binary);
    if (error || size > LARGEST_FILE || !file) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) return std::nullopt;
    return bytes;
}

// The slot whose grid the lap was driven on; 0, with the reason told, if there is none. The track
// of the lap's name comes first, whatever slot it has here.
int slot_of_grid(SharedLap const& lap) {
    std::array<std::string, 10> const tracks = discover_tracks();
    std::string other;
    for (bool const same_name : {true, false}) {
        for (int slot = 1; slot <= 9; ++slot) {
            std::string const name = track_name(tracks, slot);
            Track track;
            if (name.empty() || (name == lap.track) != same_name) continue;
            if (!load_track(tracks[static_cast<std::size_t>(slot)], track)) continue;
            std::uint64_t const grid = grid_fingerprint(track);
            if (grid == lap.grid) return slot;
            if (same_name) other = fingerprint_text(grid);
        }
    }
    fail(lap.player + "'s lap was driven on \"" + lap.track + "\" with the grid " +
         fingerprint_text(lap.grid) +
         (other.empty() ? ", and no track here has that grid"
                        : "; the track of that name here has the grid " + other));
    return 0;
}

// The ghosts of names that differ in odd letters only share one file name. Another player's record
// that has its ghost in that file; empty if there is none.
std::string other_owner(std::string const& ghost, std::string const& player) {
    BestLapTable table;
    load_best_lap_table(table);
    for (auto const& [name, entries] : table) {
        bool const owns = std::any_of(entries.begin(), entries.end(), [&](auto const& entry) {
            return entry.second.trace_file == ghost;
        });
        if (owns && name != player) return name;
    }
    return "";
}

// Enters the lap and its ghost. The ghost is on the disk before the table tells of it, under a name
// of its own: with a full disk both old ones stay.
int enter_lap(SharedLap const& lap, int slot, std::string const& track_path) {
    double const seconds = lap.time_ms / 1000.0;
    std::string const ghost = ghost_file_name(lap.player, track_path);
    std::string const owner = other_owner(ghost, lap.player);
    if (!owner.empty()) {
        return fail(lap.player + "'s ghost would have the same file as " + owner + "'s: " + ghost);
    }
    if (ghost.size() > LONGEST_GHOST_NAME) return fail(ghost + " is too long a name for a file");
    std::string const place = pref_path(ghost.c_str());
    std::string const fresh = place + ".import";
    std::error_code ignored;
    if (!save_ghost_trace(fresh, lap.frames, lap.ticks_per_step) || !flush_to_disk(fresh)) {
        fs::remove(to_path(fresh), ignored);
        return fail("the ghost could not be written; the old records stand");
    }
    flush_replaced_files();
    int const rank = record_best_lap(lap.player, slot, seconds, ghost);
    std::optional<BestEntry> const entered = find_record(lap.player, slot);
    if (!entered || entered->trace_file != ghost || std::abs(entered->seconds - seconds) > 0.0005) {
        fs::remove(to_path(fresh), ignored);
        return fail("the record could not be written; the old ones stand");
    }
    if (!take_name(fresh, place)) {
        return fail("the time is entered, but " + place + " cannot be replaced by its ghost");
    }
    flush_folder_of(place);
    keep_records();
    std::printf("%s on %s: %s, now %s's record%s.\n", lap.player.c_str(),
                track_name_from_path(track_path).c_str(), seconds_text(seconds).c_str(),
                lap.player.c_str(), rank == 2 ? " and the best of all" : "");
    return 0;
}

} // namespace

int list_records() {
    std::array<std::string, 10> const tracks = discover_tracks();
    BestLapTable table;
    std::string const file = pref_path("best_lap_times.txt");
    if (!load_best_lap_table(table) && is_there(to_path(file))) {
        return fail(file + " cannot be read");
    }
    if (table.empty()) {
        std::printf("There are no records yet.\n");
        return 0;
    }
    for (auto const& [name, entries] : table) {
        for (auto const& [slot, entry] : entries) {
            std::string const ghost = pref_path(entry.trace_file.c_str());
            std::error_code ignored;
            bool const kept =
                !entry.trace_file.empty() && fs::is_regular_file(to_path(ghost), ignored);
            std::printf("%-16s %d  %-20s %12s  %s\n", name.c_str(), slot,
                        track_name(tracks, slot).c_str(), seconds_text(entry.seconds).c_str(),
                        kept ? "ghost" : "no ghost");
        }
    }
    return 0;
}

int export_lap(std::string const& name, std::string const& track, std::string const& path) {
    std::array<std::string, 10> const tracks = discover_tracks();
    int const slot = find_slot(tracks, track);
    if (slot == 0) return fail("there is no track \"" + track + "\"");
    std::string const& track_path = tracks[static_cast<std::size_t>(slot)];
    std::optional<BestEntry> const record = find_record(name, slot);
    if (!record) return fail(name + " has no record on " + track_name(tracks, slot));
    // A slot may have got another track since: the ghost's name tells which it was.
    if (record->trace_file != ghost_file_name(name, track_path)) {
        return fail(name + "'s record in slot " + std::to_string(slot) +
                    " has no ghost of the track that is there now");
    }
    SharedLap lap{.player = name, .track = track_name(tracks, slot), .frames = {}};
    lap.time_ms = static_cast<std::uint32_t>(std::lround(record->seconds * 1000.0));
    Track grid;
    if (!load_track(track_path, grid)) return fail(track_path + " cannot be loaded");
    lap.grid = grid_fingerprint(grid);
    std::string const ghost = pref_path(record->trace_file.c_str());
    if (!load_ghost_trace(ghost, lap.frames, &lap.ticks_per_step)) {
        return fail(ghost + " cannot be read");
    }
    std::string fault;
    std::optional<std::string> const bytes = pack_lap(lap, fault);
    if (!bytes) return fail("the lap cannot be shared: " + fault);
    if (is_there(to_path(path))) return fail(path + " is there already");
    if (!replace_file(path, {*bytes})) return fail(path + " cannot be written");
    std::printf("Wrote %s: %s on %s, %s, %zu bytes.\n", path.c_str(), name.c_str(),
                lap.track.c_str(), seconds_text(record->seconds).c_str(), bytes->size());
    return 0;
}

int import_lap(std::string const& path) {
    std::optional<std::string> const bytes = read_file_whole(path);
    if (!bytes) return fail(path + " cannot be read");
    std::string fault;
    std::optional<SharedLap> const lap = unpack_lap(*bytes, fault);
    if (!lap) return fail(path + ": " + fault);
    int const slot = slot_of_grid(*lap);
    if (slot == 0) return 1;
    double const seconds = lap->time_ms / 1000.0;
    std::optional<BestEntry> const own = find_record(lap->player, slot);
    if (own && !(seconds < own->seconds)) {
        std::printf("%s's record of %s on %s stays: the lap in the file took %s.\n",
                    lap->player.c_str(), seconds_text(own->seconds).c_str(), lap->track.c_str(),
                    seconds_text(seconds).c_str());
        return 0;
    }
    return enter_lap(*lap, slot, discover_tracks()[static_cast<std::size_t>(slot)]);
}
