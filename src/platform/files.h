#pragma once

// What each system's files need done in its own way. Paths are strings of UTF-8 on all of them.

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>

// The path as the standard library takes it. A std::string given to it directly would lose all but
// plain letters on Windows.
std::filesystem::path to_path(std::string const& path);

// The way back. Where a name cannot be said in UTF-8, U+FFFD stands for what cannot.
std::string to_text(std::filesystem::path const& path);

// Whether there is anything of that name. What the system will not look for counts as nothing.
inline bool is_there(std::filesystem::path const& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

// The path from the root on; an empty one if there is none.
inline std::filesystem::path from_root(std::filesystem::path const& path) {
    std::error_code ignored;
    return std::filesystem::absolute(path, ignored);
}

// Whether a file may bear that name.
bool can_name_file(std::string const& name);

// The name for a file that is to be called `name`, of letters that every system takes: another one
// where the system means a device by it, whatever comes behind the first dot.
std::string name_of_no_device(std::string const& name);

// Whether everybody may make symbolic links here.
bool links_for_everybody();

// std::fopen.
std::FILE* open_file(std::string const& path, char const* mode);

// Makes a file and opens it for writing bytes; null if there is anything of that name already.
std::FILE* create_file(std::string const& path);

// Gives the file `from` the name `to` in one step. A file that had that name is gone then: whoever
// looks finds the one or the other whole. False, and nothing has changed, if it fails.
bool take_name(std::string const& from, std::string const& to);

// Gives the file a second name, on the same file system. False if that cannot be.
bool add_name(std::string const& file, std::string const& name);

// Exchanges the files behind two names in one step. False, and nothing has changed, if it fails or
// the file system cannot.
bool exchange_names(std::string const& one, std::string const& other);

// Marks a folder as in use by this program until it ends, however it ends. If no other running
// program uses it, calls `if_alone` first; others that come meanwhile wait for its end.
void enter_folder(std::string const& folder, std::function<void()> const& if_alone);

// Waits until what the file holds, or which names the folder holds, has reached the disk: seconds
// at worst. False if the system cannot say so.
bool flush_to_disk(std::string const& path);
