#include "track_compiler/data_file.h"

#include "records/file_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

// Cuts one word off the front of `line`; false if a quote is left open.
bool take_word(std::string_view& line, std::string_view& word) {
    if (line[0] == '"') {
        std::size_t const end = line.find('"', 1);
        if (end == std::string_view::npos) return false;
        word = line.substr(1, end - 1);
        line.remove_prefix(end + 1);
        return true;
    }
    std::size_t end = 0;
    while (end < line.size() && !is_blank(line[end]) && line[end] != '#') ++end;
    word = line.substr(0, end);
    line.remove_prefix(end);
    return true;
}

// The words of `line`; false if a quote is left open.
bool split_line(std::string_view line, std::vector<std::string_view>& words) {
    words.clear();
    while (!line.empty() && line[0] != '#') {
        if (is_blank(line[0])) {
            line.remove_prefix(1);
        } else if (!take_word(line, words.emplace_back())) {
            return false;
        }
    }
    return true;
}

} // namespace

bool DataReader::next(DataLine& line, Faults& faults) {
    while (!rest_.empty()) {
        std::string_view const text = rest_.substr(0, rest_.find('\n'));
        rest_.remove_prefix(std::min(text.size() + 1, rest_.size()));
        ++number_;
        if (!split_line(text, words_)) {
            faults.push_back({number_, "a quote is not closed"});
        } else if (!words_.empty()) {
            line.number = number_;
            line.words.swap(words_);
            return true;
        }
    }
    return false;
}

std::optional<std::string> read_text(std::string const& path) {
    bool broken_off = false;
    std::optional<std::string> text = read_file_text(path, &broken_off);
    return broken_off ? std::nullopt : std::move(text);
}

std::string in_quotes(std::string_view word) {
    std::string quote(1, '"');
    quote += word;
    return quote += '"';
}

std::optional<double> parse_number(std::string_view word) {
    double value = 0.0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}
