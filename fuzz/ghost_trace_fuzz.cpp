// Any bytes as a ghost: what loads can be played, and comes back the same when it is saved.

#include "input_file.h"
#include "records/ghost_trace.h"

#include <cmath>
#include <cstring>

namespace {

constexpr double STEP_MS = 10.0;

// The frames are doubles first and two flags behind them, and flags are made 0 or 1 as they load;
// so what was loaded twice must agree to the byte.
bool same_frames(std::vector<CarState> const& a, std::vector<CarState> const& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(CarState)) == 0);
}

void require_saved_alike(std::vector<CarState> const& frames, unsigned ticks_per_step) {
    static std::string const path = scratch_folder() / "again.trace";
    std::vector<CarState> again;
    unsigned ticks_again = 0;
    require(save_ghost_trace(path, frames, ticks_per_step));
    require(load_ghost_trace(path, again, &ticks_again));
    require(ticks_again == ticks_per_step && same_frames(frames, again));
}

void require_playable(Player const& player) {
    double const steps =
        static_cast<double>(player.best_trace.size()) / player.best_trace_substeps + 2.0;
    for (double step = -1.0; step < steps; step += 0.75) {
        CarState pose;
        if (!pick_ghost(player, step * STEP_MS, STEP_MS, 0.5, &pose)) continue;
        require(std::isfinite(pose.x) && std::isfinite(pose.y) && std::isfinite(pose.heading));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static std::string const path = scratch_folder() / "any.trace";
    write_bytes(path, data, size);
    for (SDL_FPoint const& point : load_ghost_line(path)) {
        require(std::isfinite(point.x) && std::isfinite(point.y));
    }
    Player player;
    unsigned ticks_per_step = 0;
    if (!load_ghost_trace(path, player.best_trace, &ticks_per_step)) {
        require(player.best_trace.empty());
        return 0;
    }
    require(ticks_per_step >= 1 && ticks_per_step <= 1000);
    player.best_trace_substeps = static_cast<decltype(player.best_trace_substeps)>(ticks_per_step);
    player.waiting_for_line = false;
    require_playable(player);
    require_saved_alike(player.best_trace, ticks_per_step);
    return 0;
}
