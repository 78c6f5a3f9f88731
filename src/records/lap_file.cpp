#include "records/lap_file.h"

#include "records/deflated.h"
#include "records/printed.h"
#include "world/car_physics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <sstream>
#include <string_view>
#include <zlib.h>

namespace {

constexpr std::string_view MAGIC = "brindle-lap 1";
constexpr std::uint32_t MAX_LAP_MS = 600'000; // ten minutes; 34 MB of frames at ten ticks a step
constexpr unsigned MAX_TICKS = 10;            // per step; more than that the game has never had
constexpr std::size_t LONGEST_NAME = 127;     // bytes; the table of best laps holds no longer one

// How a frame follows from the one before. 0 to 31: by the physics, four bits for the controls and
// one for the ground.
constexpr unsigned STOOD = 32;   // no change
constexpr unsigned GIVEN = 33;   // what changed is given, all bits of it
constexpr unsigned PADDED = 128; // and its padding changed, too, which is given

constexpr std::size_t FRAME = sizeof(CarState);
constexpr std::size_t PADDING = FRAME - offsetof(CarState, in_wall) - 1;
using Bytes = std::array<unsigned char, FRAME>;

Bytes bytes_of(CarState const& car) {
    Bytes bytes;
    std::memcpy(bytes.data(), &car, FRAME);
    return bytes;
}

// FNV-1a.
constexpr std::uint64_t SUM_START = 0xCBF29CE484222325U;
std::uint64_t add_to_sum(std::uint64_t sum, void const* data, std::size_t size) {
    auto const* bytes = static_cast<unsigned char const*>(data);
    for (std::size_t i = 0; i < size; ++i) sum = (sum ^ bytes[i]) * 0x100000001B3U;
    return sum;
}

// Over all that the file says.
std::uint64_t sum_of(SharedLap const& lap) {
    std::string const head =
        printed("%s\n%s\n%016llx %u %u\n", lap.player.c_str(), lap.track.c_str(),
                static_cast<unsigned long long>(lap.grid), lap.time_ms, lap.ticks_per_step);
    std::uint64_t const sum = add_to_sum(SUM_START, head.data(), head.size());
    return add_to_sum(sum, lap.frames.data(), lap.frames.size() * FRAME);
}

bool is_name(std::string const& name) {
    return !name.empty() && name.size() <= LONGEST_NAME &&
           std::none_of(name.begin(), name.end(), [](char c) {
               return c == ']' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
           });
}

// Bounds that no car comes near, and within which the physics is quick and finite.
bool is_drivable(CarState const& car) {
    auto const within = [](double value, double bound) { return std::abs(value) <= bound; };
    return within(car.x, 1e5) && within(car.y, 1e5) && within(car.speed, 10.0) &&
           within(car.throttle, 10.0) && within(car.heading, 10.0) && within(car.travel_dir, 10.0);
}

// The flags of a frame from a file may be anything, but a bool in memory only 0 or 1.
bool has_true_flags(Bytes const& bytes) {
    return bytes[offsetof(CarState, skidding)] <= 1 && bytes[offsetof(CarState, in_wall)] <= 1;
}

// The frame that follows `before` by `way`, below GIVEN; its padding stays.
Bytes follow(CarState const& before, unsigned way) {
    CarState car = before;
    if (way < STOOD) {
        Input const input{(way & 1U) != 0, (way & 2U) != 0, (way & 4U) != 0, (way & 8U) != 0};
        physics_step_cartest(car, input, {(way & 16U) != 0 ? SIM_RW_RESIST : 0.0});
    }
    Bytes bytes = bytes_of(car);
    Bytes const old = bytes_of(before);
    std::copy(old.end() - PADDING, old.end(), bytes.end() - PADDING);
    return bytes;
}

// The way from `before` to `after`; the same as the last time comes first, as it mostly is.
unsigned find_way(CarState const& before, Bytes const& after, unsigned last) {
    auto const leads = [&](unsigned way) {
        Bytes const bytes = follow(before, way);
        return std::equal(bytes.begin(), bytes.end() - PADDING, after.begin());
    };
    if (last < GIVEN && leads(last)) return last;
    for (unsigned way = 0; way < GIVEN; ++way) {
        if (leads(way)) return way;
    }
    return GIVEN;
}

// A byte a frame, and behind all of them what is given.
std::string encode(std::vector<CarState> const& frames) {
    std::string ways;
    std::string given;
    CarState before;
    std::memset(static_cast<void*>(&before), 0, FRAME);
    unsigned way = GIVEN;
    for (CarState const& frame : frames) {
        Bytes const bytes = bytes_of(frame);
        Bytes const old = bytes_of(before);
        way = find_way(before, bytes, way);
        bool const padded = !std::equal(bytes.end() - PADDING, bytes.end(), old.end() - PADDING);
        ways += static_cast<char>(way | (padded ? PADDED : 0U));
        for (std::size_t i = 0; i < FRAME; ++i) {
            bool const needed = i < FRAME - PADDING ? way == GIVEN : padded;
            if (needed) given += static_cast<char>(bytes[i] ^ old[i]);
        }
        std::memcpy(static_cast<void*>(&before), &frame, FRAME); // padding as well
    }
    return ways + given;
}

// Nothing for a body that is not exactly `count` frames.
std::optional<std::vector<CarState>> decode(std::string const& body, std::size_t count) {
    std::vector<CarState> frames(count);
    CarState before;
    std::memset(static_cast<void*>(&before), 0, FRAME);
    std::size_t given = count;
    for (std::size_t frame = 0; frame < count; ++frame) {
        unsigned const word = static_cast<unsigned char>(body[frame]);
        unsigned const way = word & ~PADDED;
        if (way > GIVEN) return std::nullopt;
        Bytes bytes = way < GIVEN ? follow(before, way) : bytes_of(before);
        for (std::size_t i = 0; i < FRAME; ++i) {
            bool const needed = i < FRAME - PADDING ? way == GIVEN : (word & PADDED) != 0;
            if (!needed) continue;
            if (given == body.size()) return std::nullopt;
            bytes[i] =
                static_cast<unsigned char>(bytes[i] ^ static_cast<unsigned char>(body[given++]));
        }
        if (!has_true_flags(bytes)) return std::nullopt;
        std::memcpy(static_cast<void*>(&before), bytes.data(), FRAME);
        if (!is_drivable(before)) return std::nullopt;
        std::memcpy(static_cast<void*>(&frames[frame]), bytes.data(), FRAME);
    }
    if (given != body.size()) return std::nullopt;
    return frames;
}

// Never more than `size` bytes, whatever `packed` would unfold to.
std::optional<std::string> inflated(std::string_view packed, std::size_t size) {
    std::string text(size, '\0');
    auto got = static_cast<uLongf>(size);
    auto const* from = reinterpret_cast<Bytef const*>(packed.data());
    auto* to = reinterpret_cast<Bytef*>(text.data());
    int const status = uncompress(to, &got, from, static_cast<uLong>(packed.size()));
    if (status != Z_OK || got != size) return std::nullopt;
    return text;
}

// The time that the frames take. They begin and end within a tick of the goal line.
bool times_agree(SharedLap const& lap) {
    double const frames_ms = static_cast<double>(lap.frames.size()) * 10.0 / lap.ticks_per_step;
    return std::abs(frames_ms - lap.time_ms) <= 20.0;
}

char const* fault_of(SharedLap const& lap) {
    if (!is_name(lap.player)) return "the player's name does not fit in the table of best laps";
    if (!is_name(lap.track)) return "the track's name is none";
    if (lap.time_ms == 0 || lap.time_ms > MAX_LAP_MS) return "the lap takes more than ten minutes";
    if (lap.ticks_per_step < 1 || lap.ticks_per_step > MAX_TICKS) return "its ticks are not ours";
    if (!times_agree(lap)) return "its time is not that of its ghost";
    bool const drivable = std::all_of(lap.frames.begin(), lap.frames.end(), is_drivable);
    return drivable ? nullptr : "its ghost is damaged";
}

// The lines of the head, each a word and its value, in a fixed order.
class HeadReader {
public:
    explicit HeadReader(std::string const& bytes) : stream_(bytes) {}

    std::string text(std::string_view word) {
        std::string line;
        std::getline(stream_, line);
        bool const right = line.size() > word.size() && line.starts_with(word) &&
                           line[word.size()] == ' ' && line.size() < 2 * LONGEST_NAME;
        good_ = good_ && right && stream_.good();
        return good_ ? line.substr(word.size() + 1) : "";
    }
    // Digits of `base` only.
    std::uint64_t number(std::string_view word, int base = 10) {
        std::string const value = text(word);
        std::size_t end = 0;
        bool const digits = !value.empty() && value.size() <= 16 &&
                            value.find_first_not_of(base == 16 ? "0123456789abcdef"
                                                               : "0123456789") == std::string::npos;
        std::uint64_t const parsed = digits ? std::stoull(value, &end, base) : 0;
        good_ = good_ && digits;
        return parsed;
    }
    bool good() const { return good_; }
    std::size_t end() { return static_cast<std::size_t>(stream_.tellg()); }

private:
    std::istringstream stream_;
    bool good_ = true;
};

} // namespace

std::uint64_t grid_fingerprint(Track const& track) {
    std::array<std::int32_t, 2> const size{track.width, track.height};
    std::uint64_t const sum = add_to_sum(SUM_START, size.data(), sizeof size);
    return add_to_sum(sum, track.cells.data(), track.cells.size());
}

std::string fingerprint_text(std::uint64_t fingerprint) {
    return printed("%016llx", static_cast<unsigned long long>(fingerprint));
}

std::optional<std::string> pack_lap(SharedLap const& lap, std::string& fault) {
    if (char const* found = fault_of(lap)) {
        fault = found;
        return std::nullopt;
    }
    std::string const body = encode(lap.frames);
    std::optional<std::string> const packed = deflated(body);
    if (!packed) {
        fault = "no memory to pack it";
        return std::nullopt;
    }
    std::ostringstream file;
    file << MAGIC << "\nplayer " << lap.player << "\ntrack " << lap.track << "\ngrid "
         << fingerprint_text(lap.grid) << "\ntime " << lap.time_ms << "\nticks "
         << lap.ticks_per_step << "\nframes " << lap.frames.size() << "\nsum "
         << fingerprint_text(sum_of(lap)) << "\nbody " << body.size() << '\n'
         << *packed;
    return file.str();
}

std::optional<SharedLap> unpack_lap(std::string const& bytes, std::string& fault) {
    fault = "it is no lap of the game, or it is damaged";
    if (!bytes.starts_with(std::string(MAGIC) + "\n")) return std::nullopt;
    std::string const head = bytes.substr(MAGIC.size() + 1, std::size_t{16} * LONGEST_NAME);
    HeadReader reader(head);
    SharedLap lap;
    lap.player = reader.text("player");
    lap.track = reader.text("track");
    lap.grid = reader.number("grid", 16);
    auto const time_ms = reader.number("time");
    auto const ticks = reader.number("ticks");
    auto const count = reader.number("frames");
    auto const sum = reader.number("sum", 16);
    auto const size = reader.number("body");
    if (!reader.good() || time_ms > MAX_LAP_MS || ticks > MAX_TICKS || count > MAX_LAP_MS + 20 ||
        size < count || size > count * (FRAME + 1)) {
        return std::nullopt;
    }
    lap.time_ms = static_cast<std::uint32_t>(time_ms);
    lap.ticks_per_step = static_cast<unsigned>(ticks);
    std::optional<std::string> const body =
        inflated(std::string_view(bytes).substr(MAGIC.size() + 1 + reader.end()),
                 static_cast<std::size_t>(size));
    if (!body) return std::nullopt;
    std::optional<std::vector<CarState>> frames = decode(*body, static_cast<std::size_t>(count));
    if (frames) lap.frames = *std::move(frames);
    if (lap.frames.size() != count || sum_of(lap) != sum) {
        fault = "it is damaged, or was driven with another version of the game";
        return std::nullopt;
    }
    if (char const* found = fault_of(lap)) {
        fault = found;
        return std::nullopt;
    }
    fault.clear();
    return lap;
}
