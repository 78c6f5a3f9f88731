#include "world/track_file.h"

#include "base/own_place.h"
#include "platform/files.h"
#include "world/geometry.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

// 8192 x 8192: more than any texture holds. A larger grid would only take memory, and a head can
// ask for it in twenty bytes.
constexpr std::int64_t MAX_CELLS = std::int64_t{1} << 26;

// Rows may be shorter than the grid, but not by any amount: a grid of more than FREE_CELLS must
// have a byte in the file for every so many cells, and no single row may be so long.
constexpr std::size_t FREE_CELLS = std::size_t{1} << 24;
constexpr std::size_t CELLS_PER_BYTE = 16;

// Hands out a stream line by line from a buffer of fixed size, so that a line may be of any
// length.
class LineReader {
public:
    explicit LineReader(std::istream& stream) : stream_(stream), buffer_(std::size_t{1} << 13) {}

    // Writes the next line's first bytes, `limit` at most, to `out` and drops the others. The
    // number written; nothing if the stream has ended.
    std::optional<std::size_t> next(std::uint8_t* out, std::size_t limit) {
        if (at_ == end_ && !refill()) return std::nullopt;
        std::size_t written = 0;
        do {
            char const* from = buffer_.data() + at_;
            void const* feed = std::memchr(from, '\n', end_ - at_);
            std::size_t const run =
                feed != nullptr ? static_cast<std::size_t>(static_cast<char const*>(feed) - from)
                                : end_ - at_;
            std::size_t const kept = std::min(run, limit - written);
            std::memcpy(out + written, from, kept);
            written += kept;
            at_ += run;
            if (feed != nullptr) {
                ++at_;
                break;
            }
        } while (refill());
        return written;
    }

private:
    bool refill() {
        stream_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        at_ = 0;
        end_ = static_cast<std::size_t>(stream_.gcount());
        return end_ > 0;
    }

    std::istream& stream_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
};

bool read_head(std::istream& file, Track& track) {
    if (!(file >> track.width >> track.height)) return false;
    if (track.width < 1 || track.height < 1) return false;
    if (std::int64_t{track.width} * track.height > MAX_CELLS) return false;
    if (static_cast<std::size_t>(track.width) > FREE_CELLS) return false;
    file.get();
    return true;
}

// The grid grows row by row, as far as the file really goes.
bool read_rows(std::istream& file, Track& track) {
    LineReader lines(file);
    auto const width = static_cast<std::size_t>(track.width);
    std::size_t bytes = 0;
    for (int row = 0; row < track.height; ++row) {
        track.cells.resize(track.cells.size() + width, 'g');
        std::uint8_t* cells = &track.cells[track.index(0, row)];
        std::optional<std::size_t> const held = lines.next(cells, width);
        if (!held) return false;
        bytes += *held;
        if (track.cells.size() > FREE_CELLS + CELLS_PER_BYTE * bytes) return false;
        std::transform(cells, cells + width, cells, [](std::uint8_t cell) {
            return cell == '\r' ? std::uint8_t{'g'} : cell; // without a branch, unlike std::replace
        });
    }
    return true;
}

// Finds the start cell and the box of the goal line; false if either is missing.
bool find_markers(Track& track) {
    void const* const star = std::memchr(track.cells.data(), '*', track.cells.size());
    if (star == nullptr) return false;
    auto const start =
        static_cast<int>(static_cast<std::uint8_t const*>(star) - track.cells.data());
    track.start_x = start % track.width;
    track.start_y = start / track.width;
    return find_goal_line(track);
}

// Once: the folder is looked at again and again.
void tell_unreadable(std::error_code const& error) {
    static bool told = false;
    if (!std::exchange(told, true)) std::fprintf(stderr, "tracks: %s\n", error.message().c_str());
}

std::vector<TrackFile> track_files_in(fs::path const& folder) {
    std::vector<TrackFile> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::size_t const slot = slot_of_file(entry->path());
        std::error_code ignored;
        if (slot == 0 || entry->path().extension() != ".trk") continue;
        if (entry->is_regular_file(ignored)) files.push_back({slot, entry->path()});
    }
    if (error && error != std::errc::no_such_file_or_directory) tell_unreadable(error);
    return files;
}

} // namespace

bool load_track(std::string const& path, Track& track) {
    std::ifstream file(to_path(path), std::ios::binary);
    return file && read_track(file, path, track);
}

bool read_track(std::istream& file, std::string const& name, Track& track) {
    Track scratch;
    if (!read_head(file, scratch) || !read_rows(file, scratch)) return false;
    if (!find_markers(scratch)) {
        std::fprintf(stderr, "load_track(%s): missing '*' or '!'\n", name.c_str());
        return false;
    }
    head_from_goal(scratch);
    scratch.compute_grass_distance();
    scratch.compute_start_distance();
    track = std::move(scratch);
    return true;
}

std::size_t slot_of_file(fs::path const& path) {
    std::string const name = to_text(path.filename());
    bool const numbered = name.size() > 2 && name[0] >= '1' && name[0] <= '9' && name[1] == '_';
    bool const track = path.extension() == ".trk" || path.extension() == ".png";
    return numbered && track ? static_cast<std::size_t>(name[0] - '0') : 0;
}

std::string picture_of_track(std::string const& path) {
    return to_text(to_path(path).replace_extension(".png"));
}

std::vector<TrackFile> find_track_files() {
    std::vector<TrackFile> files = track_files_in("tracks");
    if (OWN_PLACE.empty()) return files;
    std::vector<TrackFile> all = track_files_in(to_path(OWN_PLACE + "tracks"));
    std::array<bool, 10> taken{};
    for (TrackFile const& own : all) taken[own.slot] = true;
    std::copy_if(files.begin(), files.end(), std::back_inserter(all),
                 [&taken](TrackFile const& file) { return !taken[file.slot]; });
    return all;
}

std::array<std::string, 10> discover_tracks() {
    std::array<std::string, 10> slots;
    for (TrackFile const& file : find_track_files()) {
        if (slots[file.slot].empty()) slots[file.slot] = to_text(file.path);
    }
    return slots;
}

std::string track_name_from_path(std::string const& path) {
    std::string const stem = to_text(to_path(path).stem());
    std::size_t const digits = std::min(stem.find_first_not_of("0123456789"), stem.size());
    bool const numbered = digits > 0 && digits < stem.size() && stem[digits] == '_';
    return numbered ? stem.substr(digits + 1) : stem;
}
