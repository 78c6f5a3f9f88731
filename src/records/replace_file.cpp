#include "records/replace_file.h"

#include "platform/files.h"
#include "platform/keep_records.h"
#include "records/file_handle.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <system_error>

namespace fs = std::filesystem;

namespace {

std::string resolve_link(std::string const& path) {
    std::error_code error;
    if (!fs::is_symlink(to_path(path), error)) return path;
    fs::path const named = fs::canonical(to_path(path), error);
    return error ? path : to_text(named);
}

// A plain file that could be written in place, or nothing yet.
bool may_replace(std::string const& path, fs::file_status const& status) {
    if (status.type() == fs::file_type::not_found) return true;
    return fs::is_regular_file(status) && FileHandle(open_file(path, "r+b")) != nullptr;
}

constexpr std::string_view NEIGHBOUR_END = ".new";

// A name that no other running game uses either; opening it exclusively makes sure of it.
std::string neighbour(std::string const& path) {
    auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
    return path + "." + std::to_string(now) + std::string(NEIGHBOUR_END);
}

// What is to reach the disk next.
enum class Stage { Content, Name, OldOnesEnd, Done };

// A file that this program has replaced and not yet seen reach the disk.
struct Waiting {
    std::string old; // the neighbour that holds what was there before
    Stage next = Stage::Content;
};

std::map<std::string, Waiting>& waiting_for_disk() {
    static std::map<std::string, Waiting> files;
    static int const at_the_end = std::atexit(flush_replaced_files);
    static_cast<void>(at_the_end);
    return files;
}

void remove_file(std::string const& path) {
    std::error_code ignored;
    fs::remove(to_path(path), ignored);
}

bool write_and_close(std::FILE* file, std::initializer_list<std::string_view> pieces) {
    bool whole = true;
    for (std::string_view const piece : pieces) {
        whole = whole && std::fwrite(piece.data(), 1, piece.size(), file) == piece.size();
    }
    return std::fclose(file) == 0 && whole; // the last bytes may fail as late as the close
}

bool make_empty(std::string const& path) {
    return FileHandle(create_file(path)) != nullptr;
}

// Gives `fresh` the name `target`; the old file's new name, empty if it failed. Exchanging is as
// atomic as a rename over the old file, but after that some file systems (ext4) write the new one
// out to the disk on the spot, 10 ms for a ghost. Next best is a second name for the old one: then,
// too, there is never a moment without a file of that name.
std::string change_places(std::string const& fresh, std::string const& target) {
    if (exchange_names(fresh, target)) return fresh;
    std::string aside = neighbour(target);
    if (!add_name(target, aside) && !take_name(target, aside)) return "";
    if (take_name(fresh, target)) return aside;
    take_name(aside, target);
    return "";
}

// The first of several replacements keeps the old file, the only one known to be on the disk. Where
// there is none an empty one stands for it: the sign that the new one may be torn.
bool put_in_place(std::string const& fresh, std::string const& target) {
    auto const known = waiting_for_disk().find(target);
    if (known != waiting_for_disk().end() && known->second.next <= Stage::Name) {
        known->second.next = Stage::Content;
        if (!exchange_names(fresh, target)) return take_name(fresh, target);
        remove_file(fresh);
        return true;
    }
    std::error_code ignored;
    bool const is_first = !fs::exists(to_path(target), ignored);
    if (is_first && !make_empty(target)) return false;
    std::string const old = change_places(fresh, target);
    if (!old.empty()) {
        waiting_for_disk()[target] = {.old = old};
    } else if (is_first) {
        remove_file(target);
    }
    return !old.empty();
}

// One wait for the disk. False if it cannot be reached.
bool take_step(std::string const& file, Waiting& waiting) {
    std::error_code ignored;
    bool const is_gone = !fs::exists(to_path(file), ignored); // somebody wanted it so
    switch (waiting.next) {
    case Stage::Content:
        if (!is_gone && !flush_to_disk(file)) return false;
        waiting.next = Stage::Name;
        return true;
    case Stage::Name:
        if (!is_gone && !flush_folder_of(file)) return false;
        remove_file(waiting.old);
        waiting.next = Stage::OldOnesEnd;
        return true;
    default:
        flush_folder_of(file); // the old file must not come back beside newer ones
        waiting.next = Stage::Done;
        return true;
    }
}

} // namespace

bool replace_file(std::string const& path, std::initializer_list<std::string_view> pieces) {
    std::error_code ignored;
    std::string const target = resolve_link(path);
    fs::file_status const status = fs::status(to_path(target), ignored);
    if (!may_replace(target, status)) return false;

    std::string const fresh = neighbour(target);
    std::FILE* file = create_file(fresh);
    if (file == nullptr) return false;
    if (write_and_close(file, pieces)) {
        if (fs::exists(status)) fs::permissions(to_path(fresh), status.permissions(), ignored);
        if (put_in_place(fresh, target)) {
            keep_records();
            return true;
        }
    }
    remove_file(fresh);
    return false;
}

std::string failure_reason() {
    return errno != 0 ? std::strerror(errno) : "not a plain file";
}

void flush_replaced_files() {
    for (auto& [file, waiting] : waiting_for_disk()) {
        while (waiting.next != Stage::Done && take_step(file, waiting)) {
        }
    }
    std::erase_if(waiting_for_disk(),
                  [](auto const& entry) { return entry.second.next == Stage::Done; });
}

bool flush_a_step() {
    auto const first = waiting_for_disk().begin();
    if (first == waiting_for_disk().end() || !take_step(first->first, first->second)) return false;
    if (first->second.next == Stage::Done) waiting_for_disk().erase(first);
    return !waiting_for_disk().empty();
}

bool flush_folder_of(std::string const& path) {
    std::string const folder = to_text(to_path(path).parent_path());
    return flush_to_disk(folder.empty() ? "." : folder);
}

std::string replaced_by_neighbour(std::string const& path) {
    if (!path.ends_with(NEIGHBOUR_END)) return "";
    std::string const numbered = path.substr(0, path.size() - NEIGHBOUR_END.size());
    std::size_t const last = numbered.find_last_not_of("0123456789");
    bool const is_numbered = last != std::string::npos && last > 0 && last + 1 < numbered.size() &&
                             numbered[last] == '.';
    return is_numbered ? numbered.substr(0, last) : "";
}
