#include "records/best_laps.h"

#include "platform/files.h"
#include "records/file_text.h"
#include "records/printed.h"
#include "records/recovery.h"
#include "records/replace_file.h"

#include <SDL.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>

namespace {

constexpr std::size_t LONGEST_PIECE = 255; // bytes that are read as one line at most

enum class TableRead {
    Missing,    // no such file: a first run
    Unopenable, // there is something, but not for us
    BrokenOff,  // the disk failed before the end
    Whole,
};

std::string ask_for_pref_folder() {
    char* folder = SDL_GetPrefPath("", "BrindleRun");
    std::string path = folder != nullptr ? folder : "";
    SDL_free(folder);
    enter_folder(path, [&path] { recover_records(path); });
    return path;
}

// The first byte that is no blank to scanf, which takes its time to say that a line is none of
// ours.
char first_sign(char const* line) {
    return line[std::strspn(line, " \t\n\v\f\r")];
}

bool scan_section(char const* line, std::string& section) {
    if (first_sign(line) != '[') return false;
    std::array<char, 128> name{};
    if (std::sscanf(line, " [%127[^]]]", name.data()) != 1) return false;
    section = name.data();
    return true;
}

// Slots are read wide, so that a number beyond int cannot wrap round onto a real slot. A time that
// is not a number could never be beaten, so such a line makes no sense either.
void scan_entry(char const* line, std::string const& section, BestLapTable& table) {
    char const sign = first_sign(line);
    if (section.empty() || std::strchr("+-0123456789", sign) == nullptr || sign == '\0') return;
    long slot = 0;
    double seconds = 0.0;
    std::array<char, 160> trace{};
    int const fields = std::sscanf(line, "%ld: %lf %159s", &slot, &seconds, trace.data());
    if (fields < 2 || std::isnan(seconds)) return;
    if (slot < std::numeric_limits<int>::min() || slot > std::numeric_limits<int>::max()) return;
    table[section][static_cast<int>(slot)] = {seconds, fields == 3 ? trace.data() : ""};
}

TableRead read_table(BestLapTable& table) {
    table.clear();
    bool broken_off = false;
    std::optional<std::string> const text = read_file_text(pref_path(BEST_LAPS_FILE), &broken_off);
    if (!text) return errno == ENOENT ? TableRead::Missing : TableRead::Unopenable;
    table = parse_best_lap_table(*text);
    return broken_off ? TableRead::BrokenOff : TableRead::Whole;
}

std::string entry_line(int slot, BestEntry const& entry) {
    std::string const ghost = entry.trace_file.empty() ? "" : " " + entry.trace_file;
    return printed("%d: %.3f", slot, entry.seconds) + ghost + "\n";
}

void report_unwritable() {
    std::fprintf(stderr, "could not write %s\n", BEST_LAPS_FILE);
}

BestEntry const* find_entry(BestLapTable const& table, std::string const& name, int slot) {
    auto const section = table.find(name);
    if (section == table.end()) return nullptr;
    auto const entry = section->second.find(slot);
    return entry == section->second.end() ? nullptr : &entry->second;
}

bool beats_all_others(BestLapTable const& table, std::string const& name, int slot,
                      double seconds) {
    for (auto const& [other, entries] : table) {
        if (other == name) continue;
        auto const entry = entries.find(slot);
        if (entry != entries.end() && entry->second.seconds <= seconds) return false;
    }
    return true;
}

} // namespace

std::string pref_path(char const* file) {
    static std::string const folder = ask_for_pref_folder();
    return folder + file;
}

BestLapTable parse_best_lap_table(std::string_view text) {
    BestLapTable table;
    std::string section;
    std::string line;
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, LONGEST_PIECE);
        std::size_t const end = piece.find('\n');
        line = piece.substr(0, end == std::string_view::npos ? end : end + 1);
        text.remove_prefix(line.size());
        if (!scan_section(line.c_str(), section)) scan_entry(line.c_str(), section, table);
    }
    return table;
}

std::string best_lap_table_text(BestLapTable const& table) {
    std::string text;
    for (auto const& [name, entries] : table) {
        if (!text.empty()) text += "\n";
        text += "[" + name + "]\n";
        for (auto const& [slot, entry] : entries) text += entry_line(slot, entry);
    }
    return text;
}

bool load_best_lap_table(BestLapTable& table) {
    TableRead const read = read_table(table);
    return read == TableRead::Whole || read == TableRead::BrokenOff;
}

bool save_best_lap_table(BestLapTable const& table) {
    if (replace_file(pref_path(BEST_LAPS_FILE), {best_lap_table_text(table)})) return true;
    report_unwritable();
    return false;
}

int record_best_lap(std::string const& name, int slot, double seconds,
                    std::string const& trace_file, std::string* trouble) {
    if (name.empty() || slot < 1) return 0;
    BestLapTable table;
    TableRead const read = read_table(table);
    BestEntry const* own = find_entry(table, name, slot);
    if (own != nullptr && !(seconds < own->seconds)) return 0;

    int const rank = beats_all_others(table, name, slot, seconds) ? 2 : 1;
    table[name][slot] = {seconds, trace_file};
    // What could not be read in full must not be replaced by the part that could.
    std::string reason;
    if (read == TableRead::Missing || read == TableRead::Whole) {
        errno = 0;
        if (!save_best_lap_table(table)) reason = failure_reason();
    } else {
        report_unwritable();
        reason = TABLE_UNREADABLE;
    }
    if (trouble != nullptr) *trouble = reason;
    return rank;
}

std::string best_lap_trace(std::string const& name, int slot) {
    BestLapTable table;
    load_best_lap_table(table);
    BestEntry const* entry = find_entry(table, name, slot);
    return entry != nullptr ? entry->trace_file : "";
}

bool load_best_laps(std::map<int, BestLap>& best) {
    best.clear();
    BestLapTable table;
    if (!load_best_lap_table(table)) return false;
    for (auto const& [name, entries] : table) {
        for (auto const& [slot, entry] : entries) {
            auto const [row, added] = best.try_emplace(slot);
            if (added || row->second.seconds > entry.seconds) row->second = {name, entry.seconds};
        }
    }
    return true;
}
