// Any bytes as a track: either a whole one, or none and the old one untouched.

#include "input_file.h"
#include "world/track_file.h"

namespace {

// A grid of many cells is allowed and only slow; two numbers in the head would fill a run with it.
constexpr std::int64_t QUICK_CELLS = std::int64_t{1} << 12;

bool is_slow(std::istream& stream) {
    std::int32_t width = 0;
    std::int32_t height = 0;
    stream >> width >> height;
    return width > 0 && height > 0 && std::int64_t{width} * height > QUICK_CELLS;
}

void require_whole(Track const& track) {
    auto const cells =
        static_cast<std::size_t>(track.width) * static_cast<std::size_t>(track.height);
    require(track.width >= 1 && track.height >= 1 && track.cells.size() == cells);
    require(track.cells[track.index(track.start_x, track.start_y)] == '*');
    require(track.goal_x1 >= 0 && track.goal_x1 <= track.goal_x2 && track.goal_x2 < track.width);
    require(track.goal_y1 >= 0 && track.goal_y1 <= track.goal_y2 && track.goal_y2 < track.height);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    InputStream head(data, size);
    if (is_slow(head)) return 0;
    InputStream stream(data, size);
    Track track;
    track.width = -1;
    if (read_track(stream, "any", track)) {
        require_whole(track);
    } else {
        require(track.width == -1 && track.cells.empty());
    }
    return 0;
}
