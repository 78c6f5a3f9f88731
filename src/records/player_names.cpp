#include "records/player_names.h"

#include "records/best_laps.h"
#include "records/file_text.h"
#include "records/replace_file.h"

#include <algorithm>
#include <optional>

namespace {

constexpr char const* NAMES_FILE = "last_player_names.txt";
constexpr std::size_t LONGEST_LINE = 255; // bytes; what is beyond counts as the next line

// Takes a line off the text and gives it without the blanks around it. False at the text's end.
bool take_line(std::string_view& text, std::string& name) {
    if (text.empty()) return false;
    std::string_view const piece = text.substr(0, LONGEST_LINE);
    std::string_view line = piece.substr(0, piece.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, piece.size()));
    line = line.substr(0, line.find('\0'));
    line = line.substr(0, line.find_last_not_of("\t\n\r ") + 1);
    name = line.substr(std::min(line.find_first_not_of("\t "), line.size()));
    return true;
}

} // namespace

std::array<std::string, 2> parse_player_names(std::string_view text) {
    std::array<std::string, 2> names;
    bool const both = take_line(text, names[0]) && take_line(text, names[1]);
    if (both && !names[0].empty() && !names[1].empty()) return names;
    return {"Pixie", "Gadget"};
}

std::array<std::string, 2> load_player_names() {
    return parse_player_names(read_file_text(pref_path(NAMES_FILE)).value_or(""));
}

void save_player_names(std::string const& red, std::string const& blue) {
    replace_file(pref_path(NAMES_FILE), {red, "\n", blue, "\n"});
}
