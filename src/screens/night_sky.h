#pragma once

// The night behind the menu and the help page.

#include <SDL.h>

#include <cstdint>

// Its colour from the top of the screen, `t` = 0, to the bottom, `t` = 1.
inline SDL_Color night_sky(double t) {
    auto const channel = [t](double span, double top) {
        return static_cast<std::uint8_t>(span * t + top + 0.5);
    };
    return {channel(18, 6), channel(34, 10), channel(64, 32), 255};
}
