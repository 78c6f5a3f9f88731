#pragma once

// The state of the audio celebration at the end of a race; what is done with it stands in
// screens/finish_sequence.h.

#include <cstdint>

// All times are SDL_GetTicks milliseconds.
struct FinishSeq {
    bool active = false;
    std::uint32_t started_at = 0;
    bool chime_played = false;
    bool crowd_played = false;
    bool fanfare_played = false;
    std::uint32_t game_over_at = 0; // 0 for not yet
    std::uint32_t game_over_fade_ms = 0;
};
