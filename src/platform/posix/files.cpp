#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>

std::filesystem::path to_path(std::string const& path) {
    return path;
}

std::string to_text(std::filesystem::path const& path) {
    return path.string();
}

bool can_name_file(std::string const& name) {
    return name.find('/') == std::string::npos;
}

std::string name_of_no_device(std::string const& name) {
    return name;
}

bool links_for_everybody() {
    return true;
}

std::FILE* open_file(std::string const& path, char const* mode) {
    return std::fopen(path.c_str(), mode);
}

std::FILE* create_file(std::string const& path) {
    return std::fopen(path.c_str(), "wbx");
}

bool take_name(std::string const& from, std::string const& to) {
    return std::rename(from.c_str(), to.c_str()) == 0;
}

// Who comes here cannot exchange names, and lives without what lies in between.
bool add_name(std::string const& /*file*/, std::string const& /*name*/) {
    return false;
}

bool exchange_names([[maybe_unused]] std::string const& one,
                    [[maybe_unused]] std::string const& other) {
#ifdef RENAME_EXCHANGE
    return renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
#else
    return false;
#endif
}

void enter_folder(std::string const& folder, std::function<void()> const& if_alone) {
    char const* const name = folder.empty() ? "." : folder.c_str();
    int const mark = open(name, O_RDONLY | O_CLOEXEC); // NOLINT: as the system has it
    if (mark < 0) return;
    if (flock(mark, LOCK_EX | LOCK_NB) == 0) if_alone();
    flock(mark, LOCK_SH); // held by the open folder, which stays open
}
