#pragma once

// The clocks that the players read.

#include "base/player.h"

#include <cstdint>

// True while the player's clocks stand at 0: in the countdown and on a flying start's run-up.
bool not_started(Player const& player, bool countdown_active);
// Milliseconds of this lap at `now_ms` of the simulated clock; stands once the race has ended.
std::uint32_t lap_clock(Player const& player, bool countdown_active, double now_ms);
// The same for the whole race.
std::uint32_t total_clock(Player const& player, bool countdown_active, double now_ms);
