#include "race/clocks.h"

#include <cmath>

namespace {

std::uint32_t clock_since(Player const& player, bool countdown_active, double start_ms,
                          double now_ms) {
    if (not_started(player, countdown_active)) return 0;
    double const end_ms = player.view.finished_ms != 0 ? player.finish_ms : now_ms;
    return static_cast<std::uint32_t>(std::lround(end_ms - start_ms));
}

} // namespace

bool not_started(Player const& player, bool countdown_active) {
    return countdown_active || player.waiting_for_line;
}

std::uint32_t lap_clock(Player const& player, bool countdown_active, double now_ms) {
    return clock_since(player, countdown_active, player.lap_start_ms, now_ms);
}

std::uint32_t total_clock(Player const& player, bool countdown_active, double now_ms) {
    return clock_since(player, countdown_active, player.race_start_ms, now_ms);
}
