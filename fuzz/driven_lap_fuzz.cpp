// A lap driven by any bytes, packed and then damaged in one place: it comes back whole or not at
// all.

#include "input_file.h"
#include "records/lap_file.h"
#include "world/car_physics.h"

#include <algorithm>
#include <cstring>

namespace {

bool same_frames(std::vector<CarState> const& a, std::vector<CarState> const& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(CarState)) == 0);
}

// Bytes: 320 ticks, in which everything comes that a lap packs.
constexpr std::size_t LONGEST_DRIVE = 32;

// Ten ticks for each byte: controls, ground, and now and then a place of its own.
SharedLap driven_by(std::uint8_t const* data, std::size_t size) {
    SharedLap lap{.player = "Ann", .track = "Oval", .frames = {}};
    CarState car;
    for (std::size_t i = 0; i < std::min(size, LONGEST_DRIVE); ++i) {
        std::uint8_t const word = data[i];
        if (word >= 240) car.x += word;
        for (int tick = 0; tick < 10; ++tick) {
            physics_step_cartest(
                car, {(word & 1U) != 0, (word & 2U) != 0, (word & 4U) != 0, (word & 8U) != 0},
                {(word & 16U) != 0 ? SIM_RW_RESIST : 0.0});
            lap.frames.push_back(car);
        }
    }
    lap.time_ms = static_cast<std::uint32_t>(lap.frames.size());
    lap.ticks_per_step = 10;
    return lap;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size <= 4) return 0;
    SharedLap const lap = driven_by(data + 4, size - 4);
    std::string fault;
    std::optional<std::string> bytes = pack_lap(lap, fault);
    if (!bytes) return 0; // so far away that the bounds end
    std::size_t const at = (data[0] + 256U * data[1] + 65536U * data[2]) % bytes->size();
    (*bytes)[at] = static_cast<char>((*bytes)[at] ^ data[3]);
    std::optional<SharedLap> const back = unpack_lap(*bytes, fault);
    bool const same = back && same_frames(back->frames, lap.frames) && back->time_ms == lap.time_ms;
    require(same || (!back && !fault.empty()));
    return 0;
}
