#pragma once

// The common form of our text data: one statement a line, a keyword and its values separated by
// blanks, "double quotes" around a value with blanks in it, and # for the rest of a line that is
// meant for people.

#include "track_compiler/fault.h"

#include <optional>
#include <string>
#include <vector>

struct DataLine {
    int number = 0;                 // from 1
    std::vector<std::string> words; // never empty
};

// The statements of `text`, without empty lines and comments.
std::vector<DataLine> split_data(std::string const& text, Faults& faults);

// The file's bytes; nothing if it cannot be read.
std::optional<std::string> read_text(std::string const& path);

// A whole word as a finite decimal number.
std::optional<double> parse_number(std::string const& word);
