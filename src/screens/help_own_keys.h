#pragma once

// The help page's annotations of the players' keys, as they are in force.

#include "input/key_bindings.h"
#include "screens/keyboard_layout.h"

#include <array>
#include <vector>

// Red's, blue's on the keypad's side, blue's on the letters' side: ANNOS_RED, ANNOS_BLUE and
// ANNOS_BLUE_ALT as long as the built-in keys are in force. A key of one's own has its highlight;
// the caption stands at a control's first, where there is room for it.
// With own keys red's captions stand beside the keyboard, in this column, in key units: below it
// there is room for those of the lowest row alone.
constexpr float OWN_RED_ANCHOR = -0.35F;
using PlayerAnnos = std::array<std::vector<Anno>, 3>;
PlayerAnnos player_annos(KeyBindings const& keys);
