// Any command line: numbers stay within what the game takes. An argument a line.

#include "input_file.h"
#include "shell/options.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::vector<std::string> split_lines(std::string_view text) {
    std::vector<std::string> lines{"brindle-run"};
    for (std::size_t from = 0; from <= text.size();) {
        std::size_t const to = std::min(text.find('\n', from), text.size());
        lines.emplace_back(text.substr(from, to - from));
        from = to + 1;
    }
    return lines;
}

// These are answered and end the process.
bool is_question(std::string const& argument) {
    std::string_view const text = argument.c_str(); // as an argument ends
    return text == "-h" || text == "-help" || text == "--help" || text == "-keys";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::vector<std::string> lines = split_lines(as_text(data, size));
    if (std::any_of(lines.begin(), lines.end(), is_question)) return 0;
    std::vector<char*> arguments;
    arguments.reserve(lines.size() + 1);
    for (std::string& line : lines) arguments.push_back(line.data());
    arguments.push_back(nullptr);

    Options const options = parse_cmdline(static_cast<int>(lines.size()), arguments.data());
    require(options.track >= 0 && options.track <= 9);
    require(options.race_laps >= 0 && options.race_laps <= 99);
    return 0;
}
