#pragma once

// Which keys drive which car, and what is printed on them.

#include <SDL.h>

#include <array>
#include <string>
#include <vector>

enum class Control : int { Left, Right, Accelerate, Brake };
inline constexpr std::array ALL_CONTROLS{Control::Left, Control::Right, Control::Accelerate,
                                         Control::Brake};

// The keys of one player, by Control.
using PlayerKeys = std::array<std::vector<SDL_Scancode>, ALL_CONTROLS.size()>;
// Red's, then blue's.
using KeyBindings = std::array<PlayerKeys, 2>;

KeyBindings const& builtin_keys();

// What input.conf calls a control.
char const* control_name(Control control);
inline std::vector<SDL_Scancode> const& keys_of(PlayerKeys const& keys, Control control) {
    return keys[static_cast<std::size_t>(control)];
}

// What stands on a key of this player's keyboard, in capitals: "Z", and "Y" for the same key on a
// German one. Keys that bear words have SDL's.
std::string printed_key(SDL_Scancode key);
