#include "support/tracks.h"

#include "support/files.h"
#include "world/track_file.h"

#include <algorithm>
#include <stdexcept>

std::string track_text(std::vector<std::string> const& rows) {
    std::size_t width = 0;
    for (std::string const& row : rows) width = std::max(width, row.size());
    std::string text = std::to_string(width) + " " + std::to_string(rows.size()) + "\n";
    for (std::string const& row : rows) text += row + "\n";
    return text;
}

Track track_from_rows(std::vector<std::string> const& rows) {
    TempDir const folder;
    write_file(folder.file("1_test.trk"), track_text(rows));
    Track track;
    if (!load_track(folder.file("1_test.trk"), track)) throw std::runtime_error("no such track");
    return track;
}

Track make_hall(int width, int height) {
    auto const rim = static_cast<std::size_t>(HALL_RIM);
    auto const inner = static_cast<std::size_t>(width);
    std::string const wall(inner + 2 * rim, 'g');
    std::string const road =
        std::string(rim, 'g') + std::string(inner, '.') + std::string(rim, 'g');
    std::vector<std::string> rows(rim, wall);
    rows.insert(rows.end(), static_cast<std::size_t>(height), road);
    rows.insert(rows.end(), rim, wall);
    rows[rim][rim] = '!';
    rows[rim][rim + 1] = '*';
    return track_from_rows(rows);
}
