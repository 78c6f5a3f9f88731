// Any bytes as the table of best laps: what was read reads the same once it has been written, and
// of a torn text only lines that were written whole.

#include "input_file.h"
#include "records/best_laps.h"
#include "records/file_text.h"

#include <algorithm>
#include <cmath>

namespace {

// Names of another form than the game's own are cut in writing and reading.
bool is_plain(std::string const& text) {
    return text.size() < 100 && std::all_of(text.begin(), text.end(), [](char c) {
               return c >= '-' && c <= 'z' && c != ']';
           });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const text = as_text(data, size);
    BestLapTable const table = parse_best_lap_table(text);
    BestLapTable const again = parse_best_lap_table(best_lap_table_text(table));
    for (auto const& [name, entries] : table) {
        require(!name.empty() && name.size() < 128 && !entries.empty());
        for (auto const& [slot, entry] : entries) {
            require(!std::isnan(entry.seconds) && entry.trace_file.size() < 160);
            if (!is_plain(name) || !is_plain(entry.trace_file) ||
                !(std::abs(entry.seconds) < 1e9)) {
                continue;
            }
            require(again.contains(name) && again.at(name).contains(slot));
            require(std::abs(again.at(name).at(slot).seconds - entry.seconds) < 0.001);
        }
    }
    std::string const sure = surely_written(std::string(text));
    require(text.starts_with(sure) && (sure.empty() || sure.back() == '\n'));
    return 0;
}
