// Any bytes as a friend's lap: what is taken over is a lap that could have been packed here. And a
// lap driven by those bytes, packed and then damaged in one place: it comes back whole or not at
// all.

#include "input_file.h"
#include "records/lap_file.h"
#include "world/car_physics.h"

#include <cmath>
#include <cstring>

namespace {

bool same_frames(std::vector<CarState> const& a, std::vector<CarState> const& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(CarState)) == 0);
}

void require_packs_again(SharedLap const& lap) {
    std::string fault;
    std::optional<std::string> const bytes = pack_lap(lap, fault);
    require(bytes.has_value());
    std::optional<SharedLap> const again = unpack_lap(*bytes, fault);
    require(again && same_frames(again->frames, lap.frames));
}

// Ten ticks for each byte: controls, ground, and now and then a place of its own.
SharedLap driven_by(std::uint8_t const* data, std::size_t size) {
    SharedLap lap{.player = "Ann", .track = "Oval", .frames = {}};
    CarState car;
    for (std::size_t i = 0; i < size; ++i) {
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

void require_notices_damage(std::uint8_t const* data, std::size_t size) {
    SharedLap const lap = driven_by(data + 4, size - 4);
    std::string fault;
    std::optional<std::string> bytes = pack_lap(lap, fault);
    if (!bytes) return; // so far away that the bounds end
    std::size_t const at = (data[0] + 256U * data[1] + 65536U * data[2]) % bytes->size();
    (*bytes)[at] = static_cast<char>((*bytes)[at] ^ data[3]);
    std::optional<SharedLap> const back = unpack_lap(*bytes, fault);
    bool const same = back && same_frames(back->frames, lap.frames) && back->time_ms == lap.time_ms;
    require(same || (!back && !fault.empty()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string fault;
    std::string const any(reinterpret_cast<char const*>(data), size);
    if (std::optional<SharedLap> const lap = unpack_lap(any, fault)) require_packs_again(*lap);
    if (size > 4) require_notices_damage(data, size);
    return 0;
}
