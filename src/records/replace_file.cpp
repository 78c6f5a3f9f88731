#include "records/replace_file.h"

#include "platform/files.h"
#include "platform/keep_records.h"
#include "records/file_handle.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string resolve_link(std::string const& path) {
    std::error_code error;
    if (!fs::is_symlink(to_path(path), error)) return path;
    fs::path const named = fs::canonical(to_path(path), error);
    return error ? path : named.string();
}

// A plain file that could be written in place, or nothing yet.
bool may_replace(std::string const& path, fs::file_status const& status) {
    if (status.type() == fs::file_type::not_found) return true;
    return fs::is_regular_file(status) && FileHandle(open_file(path, "r+b")) != nullptr;
}

// A name that no other running game uses either; opening it exclusively makes sure of it.
std::string neighbour(std::string const& path) {
    auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
    return path + "." + std::to_string(now) + ".new";
}

bool write_and_close(std::FILE* file, std::initializer_list<std::string_view> pieces) {
    bool whole = true;
    for (std::string_view const piece : pieces) {
        whole = whole && std::fwrite(piece.data(), 1, piece.size(), file) == piece.size();
    }
    return std::fclose(file) == 0 && whole; // the last bytes may fail as late as the close
}

// Changes places with the old file, then removes that. A rename over the old file is as atomic, but
// some file systems (ext4) write the new one out to the disk on the spot then, 10 ms for a ghost.
bool put_in_place(std::string const& fresh, std::string const& target) {
    if (!exchange_names(fresh, target)) return take_name(fresh, target);
    std::error_code ignored;
    fs::remove(to_path(fresh), ignored);
    return true;
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
    fs::remove(to_path(fresh), ignored);
    return false;
}

std::string failure_reason() {
    return errno != 0 ? std::strerror(errno) : "not a plain file";
}
