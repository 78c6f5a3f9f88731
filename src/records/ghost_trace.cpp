#include "records/ghost_trace.h"

#include "platform/files.h"
#include "records/file_handle.h"
#include "records/replace_file.h"
#include "world/geometry.h"
#include "world/track_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <numbers>
#include <string_view>

static_assert(std::endian::native == std::endian::little, "ghost files are little-endian");

namespace {

constexpr std::uint32_t MAX_TICKS_PER_STEP = 1000;
constexpr std::uint32_t MAX_FRAMES = 10'000'000;
constexpr std::size_t TRACE_HEAD_SIZE = 8;
constexpr std::size_t SECTOR = 512;    // bytes; what a disk writes as one
constexpr double FARTHEST_PLACE = 1e6; // cells; no grid reaches that far

struct TraceFile {
    FileHandle file; // stands at the first frame; null if there is no readable head
    std::uint32_t ticks_per_step = 0;
    std::uint32_t frame_count = 0; // as the head claims
    std::uintmax_t held = 0;       // whole frames that the file is long enough for
};

TraceFile open_trace(std::string const& path) {
    std::array<std::uint32_t, 2> head{};
    std::error_code error;
    std::uintmax_t const length =
        std::filesystem::file_size(to_path(path), error); // plain files only
    if (error || length < sizeof head) return {};
    FileHandle file(open_file(path, "rb"));
    if (!file || std::fread(head.data(), sizeof head, 1, file.get()) != 1) return {};
    return {std::move(file), head[0], head[1], (length - sizeof head) / sizeof(CarState)};
}

// Reads up to `room` frames and returns how many came. A flag byte in a file may hold anything,
// but a bool in memory only 0 or 1.
std::size_t read_frames(std::FILE* file, CarState* frames, std::size_t room) {
    std::size_t const count = std::fread(frames, sizeof(CarState), room, file);
    for (std::size_t i = 0; i < count; ++i) {
        auto* bytes = reinterpret_cast<unsigned char*>(frames + i);
        for (std::size_t const flag : {offsetof(CarState, skidding), offsetof(CarState, in_wall)}) {
            bytes[flag] = bytes[flag] != 0 ? 1 : 0;
        }
    }
    return count;
}

std::string_view as_bytes(void const* data, std::size_t size) {
    return {static_cast<char const*>(data), size};
}

bool is_place(CarState const& frame) {
    return std::abs(frame.x) <= FARTHEST_PLACE && std::abs(frame.y) <= FARTHEST_PLACE;
}

// The short way round between two headings. A damaged file's heading may be so large that taking
// off whole turns would never end.
double short_way_round(double angle) {
    constexpr double TURN = 2.0 * std::numbers::pi;
    if (!(std::abs(angle) < 100.0 * TURN)) return std::remainder(angle, TURN);
    return wrap_angle(angle);
}

bool can_be_drawn(CarState const& pose) {
    return std::isfinite(pose.x) && std::isfinite(pose.y) && std::isfinite(pose.heading);
}

} // namespace

std::string sanitize_filename(std::string const& s) {
    if (s.empty()) return "_";
    std::string name = s;
    for (char& c : name) {
        bool const kept =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        if (!kept) c = '_';
    }
    return name;
}

std::string ghost_file_name(std::string const& player_name, std::string const& track_path) {
    return name_of_no_device(sanitize_filename(player_name) + "." +
                             sanitize_filename(track_name_from_path(track_path)) + ".trace");
}

bool save_ghost_trace(std::string const& path, std::vector<CarState> const& frames,
                      unsigned ticks_per_step) {
    std::array<std::uint32_t, 2> const head{std::max(ticks_per_step, 1U),
                                            static_cast<std::uint32_t>(frames.size())};
    return replace_file(path, {as_bytes(head.data(), sizeof head),
                               as_bytes(frames.data(), frames.size() * sizeof(CarState))});
}

bool load_ghost_trace(std::string const& path, std::vector<CarState>& frames,
                      unsigned* ticks_per_step) {
    frames.clear();
    if (ticks_per_step != nullptr) *ticks_per_step = 1;
    TraceFile const trace = open_trace(path);
    if (!trace.file || trace.ticks_per_step < 1 || trace.ticks_per_step > MAX_TICKS_PER_STEP ||
        trace.frame_count > MAX_FRAMES || trace.frame_count > trace.held) {
        return false;
    }
    frames.resize(trace.frame_count);
    if (read_frames(trace.file.get(), frames.data(), frames.size()) != frames.size()) {
        frames.clear();
        return false;
    }
    if (ticks_per_step != nullptr) *ticks_per_step = trace.ticks_per_step;
    return true;
}

bool ghost_trace_is_whole(std::string const& path) {
    std::vector<CarState> frames;
    if (!load_ghost_trace(path, frames, nullptr)) return false;
    auto const is_hole = [](CarState const& frame) {
        std::string_view const bytes = as_bytes(&frame, sizeof frame);
        return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
    };
    if (std::any_of(frames.begin(), frames.end(), is_hole)) return false;
    // A hole in the last sector may be shorter than a frame. Its last 8 bytes are flags, which may
    // well be zero.
    std::string_view const bytes = as_bytes(frames.data(), frames.size() * sizeof(CarState));
    std::size_t const behind = std::min((TRACE_HEAD_SIZE + bytes.size()) % SECTOR, bytes.size());
    std::string_view const tail = bytes.substr(bytes.size() - behind);
    return tail.size() <= 8 || tail.find_first_not_of('\0') != std::string_view::npos;
}

std::vector<SDL_FPoint> load_ghost_line(std::string const& path) {
    std::vector<SDL_FPoint> points;
    TraceFile const trace = open_trace(path);
    if (!trace.file || trace.frame_count > MAX_FRAMES) return points;
    auto left = static_cast<std::size_t>(std::min<std::uintmax_t>(trace.frame_count, trace.held));
    points.reserve(left);

    std::array<CarState, 256> block;
    while (left > 0) {
        std::size_t const count =
            read_frames(trace.file.get(), block.data(), std::min(left, block.size()));
        for (std::size_t i = 0; i < count; ++i) {
            if (!is_place(block[i])) return points;
            points.push_back({static_cast<float>(block[i].x), static_cast<float>(block[i].y)});
        }
        if (count == 0) break;
        left -= count;
    }
    return points;
}

bool pick_ghost(Player const& player, double sim_ms, double step_ms, double alpha, CarState* out) {
    std::vector<CarState> const& frames = player.best_trace;
    if (frames.empty() || player.waiting_for_line) return false;
    double const pos = ((sim_ms - player.lap_start_ms) / step_ms - 1.0 + alpha) *
                       static_cast<double>(player.best_trace_substeps);
    if (!(pos >= 0.0 && pos < static_cast<double>(frames.size()))) return false;

    auto const i = static_cast<std::size_t>(pos);
    if (i + 1 == frames.size()) {
        *out = frames[i];
        return can_be_drawn(*out);
    }
    CarState const& a = frames[i];
    CarState const& b = frames[i + 1];
    double const t = pos - static_cast<double>(i);
    out->x = a.x + (b.x - a.x) * t;
    out->y = a.y + (b.y - a.y) * t;
    out->heading = a.heading + short_way_round(b.heading - a.heading) * t;
    return can_be_drawn(*out);
}
