#include "track_compiler/data_file.h"

#include "platform/files.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

// Cuts one word off `line` from `at` on; false if a quote is left open.
bool take_word(std::string const& line, std::size_t& at, std::string& word) {
    if (line[at] == '"') {
        std::size_t const end = line.find('"', at + 1);
        if (end == std::string::npos) return false;
        word = line.substr(at + 1, end - at - 1);
        at = end + 1;
        return true;
    }
    std::size_t const begin = at;
    while (at < line.size() && !is_blank(line[at]) && line[at] != '#') at++;
    word = line.substr(begin, at - begin);
    return true;
}

} // namespace

std::vector<DataLine> split_data(std::string const& text, Faults& faults) {
    std::vector<DataLine> lines;
    std::istringstream stream(text);
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        DataLine data{.number = number, .words = {}};
        for (std::size_t at = 0; at < line.size();) {
            if (is_blank(line[at])) {
                ++at;
                continue;
            }
            if (line[at] == '#') break;
            std::string word;
            if (!take_word(line, at, word)) {
                faults.push_back({number, "a quote is not closed"});
                data.words.clear(); // what was read of the line means nothing
                break;
            }
            data.words.push_back(std::move(word));
        }
        if (!data.words.empty()) lines.push_back(std::move(data));
    }
    return lines;
}

std::optional<std::string> read_text(std::string const& path) {
    std::ifstream file(to_path(path), std::ios::binary);
    if (!file) return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad()) return std::nullopt;
    return text;
}

std::optional<double> parse_number(std::string const& word) {
    double value = 0.0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}
