#include "records/player_names.h"

#include "platform/files.h"
#include "platform/keep_records.h"
#include "records/best_laps.h"
#include "records/file_handle.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr char const* NAMES_FILE = "last_player_names.txt";

// One line of the file without the blanks around it. False at the end of the file.
bool read_name(std::FILE* file, std::string& name) {
    std::array<char, 256> line{};
    if (std::fgets(line.data(), static_cast<int>(line.size()), file) == nullptr) return false;
    name = line.data();
    name.erase(name.find_last_not_of("\t\n\r ") + 1);
    name.erase(0, std::min(name.find_first_not_of("\t "), name.size()));
    return true;
}

} // namespace

std::array<std::string, 2> load_player_names() {
    std::array<std::string, 2> defaults{"Pixie", "Gadget"};
    FileHandle const file(open_file(pref_path(NAMES_FILE), "r"));
    if (!file) return defaults;
    std::array<std::string, 2> names;
    bool const both = read_name(file.get(), names[0]) && read_name(file.get(), names[1]);
    return both && !names[0].empty() && !names[1].empty() ? names : defaults;
}

void save_player_names(std::string const& red, std::string const& blue) {
    FileHandle file(open_file(pref_path(NAMES_FILE), "w"));
    if (file) std::fprintf(file.get(), "%s\n%s\n", red.c_str(), blue.c_str());
    file.reset();
    keep_records();
}
