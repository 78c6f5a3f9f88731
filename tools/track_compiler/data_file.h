#pragma once

// The common form of our text data: one statement a line, a keyword and its values separated by
// blanks, "double quotes" around a value with blanks in it, and # for the rest of a line that is
// meant for people.

#include "track_compiler/fault.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct DataLine {
    int number = 0;                      // from 1
    std::vector<std::string_view> words; // within the text; never empty
};

// Hands out the statements of a text, without empty lines and comments. The text must outlive it.
class DataReader {
public:
    explicit DataReader(std::string_view text) : rest_(text) {}

    // Makes `line` the next statement; false, and `line` as it was, at the text's end. A line whose
    // quote stays open goes into `faults`.
    bool next(DataLine& line, Faults& faults);

private:
    std::string_view rest_;
    int number_ = 0;
    std::vector<std::string_view> words_;
};

// The file's bytes; nothing if it cannot be read.
std::optional<std::string> read_text(std::string const& path);

// The word in double quotes, for a message.
std::string in_quotes(std::string_view word);

// A whole word as a finite decimal number.
std::optional<double> parse_number(std::string_view word);
