#include "records/recovery.h"

#include "platform/files.h"
#include "platform/keep_records.h"
#include "records/best_laps.h"
#include "records/file_text.h"
#include "records/ghost_trace.h"
#include "records/replace_file.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Paths of the neighbours of a record's file, the newest first.
using Neighbours = std::vector<std::string>;

// By the paths of the files to which they belong.
std::map<std::string, Neighbours> find_neighbours(std::string const& folder) {
    std::map<std::string, Neighbours> found;
    std::error_code error;
    for (fs::directory_iterator entry(to_path(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        std::string const path = to_text(entry->path());
        std::string const file = replaced_by_neighbour(path);
        std::error_code ignored;
        if (!file.empty() && entry->is_regular_file(ignored)) found[file].push_back(path);
    }
    auto const written = [](std::string const& path) {
        std::error_code ignored;
        return fs::last_write_time(to_path(path), ignored);
    };
    for (auto& [file, neighbours] : found) {
        std::sort(neighbours.begin(), neighbours.end(), [&](auto const& a, auto const& b) {
            return std::pair(written(a), a) > std::pair(written(b), b);
        });
    }
    return found;
}

void keep_the_better(BestLapTable& table, BestLapTable const& other) {
    for (auto const& [name, entries] : other) {
        for (auto const& [slot, entry] : entries) {
            auto const [own, added] = table[name].try_emplace(slot, entry);
            if (!added && entry.seconds < own->second.seconds) own->second = entry;
        }
    }
}

bool recover_table(std::string const& file, Neighbours const& neighbours) {
    std::error_code ignored;
    std::optional<std::string> const text = read_file_text(file);
    if (!text && fs::exists(to_path(file), ignored)) return false;
    bool const whole = text && surely_written(*text) == *text;
    BestLapTable table = parse_best_lap_table(surely_written(text.value_or("")));
    BestLapTable const before = table;
    for (std::string const& neighbour : neighbours) {
        keep_the_better(
            table, parse_best_lap_table(surely_written(read_file_text(neighbour).value_or(""))));
    }
    if (whole && table == before) return true;
    return replace_file(file, {best_lap_table_text(table)});
}

bool is_whole_text(std::string const& path) {
    std::string const text = read_file_text(path).value_or("");
    return !text.empty() && surely_written(text) == text &&
           std::count(text.begin(), text.end(), '\n') >= 2;
}

// For a file of which one version or another counts.
bool recover_version(std::string const& file, Neighbours const& neighbours,
                     bool (*is_whole)(std::string const&)) {
    std::error_code error;
    if (is_whole(file)) return true;
    auto const whole = std::find_if(neighbours.begin(), neighbours.end(), is_whole);
    if (whole != neighbours.end()) return take_name(*whole, file);
    fs::remove(to_path(file), error);
    return !error;
}

// What `file` is tells the name by which the game knows it, which a link may bear.
bool recover(std::string const& name, std::string const& file, Neighbours const& neighbours) {
    if (name.ends_with(BEST_LAPS_FILE)) return recover_table(file, neighbours);
    if (name.ends_with(".trace")) return recover_version(file, neighbours, ghost_trace_is_whole);
    return recover_version(file, neighbours, is_whole_text);
}

void recover_folder(std::string const& folder, std::map<std::string, std::string> const& names) {
    for (auto const& [file, neighbours] : find_neighbours(folder)) {
        auto const name = names.find(file);
        if (!names.empty() && name == names.end()) continue;
        if (!recover(name != names.end() ? name->second : file, file, neighbours)) continue;
        // The disk must hold the file before it loses the neighbours.
        std::error_code ignored;
        bool const exists = fs::exists(to_path(file), ignored);
        if ((exists && !flush_to_disk(file)) || !flush_folder_of(file)) continue;
        for (std::string const& neighbour : neighbours) fs::remove(to_path(neighbour), ignored);
    }
    flush_replaced_files();
    keep_records();
}

// The records that are links to files elsewhere: by their folders, from those files to the names.
std::map<std::string, std::map<std::string, std::string>>
linked_records(std::string const& folder) {
    std::map<std::string, std::map<std::string, std::string>> found;
    std::error_code error;
    for (fs::directory_iterator entry(to_path(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code failed;
        if (!entry->is_symlink(failed)) continue;
        fs::path const file = fs::canonical(entry->path(), failed);
        if (!failed) found[to_text(file.parent_path())][to_text(file)] = to_text(entry->path());
    }
    return found;
}

} // namespace

void recover_records(std::string const& folder) {
    recover_folder(folder.empty() ? "." : folder, {});
    for (auto const& [elsewhere, names] : linked_records(folder.empty() ? "." : folder)) {
        recover_folder(elsewhere, names);
    }
}
