// Any bytes as a friend's lap: what is taken over is a lap that could have been packed here.

#include "input_file.h"
#include "records/lap_file.h"

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string fault;
    std::string const any(as_text(data, size));
    if (std::optional<SharedLap> const lap = unpack_lap(any, fault)) require_packs_again(*lap);
    return 0;
}
