#pragma once

// The help page's annotations of the players' keys, as they are in force.

#include "input/key_bindings.h"
#include "screens/keyboard_layout.h"

#include <array>
#include <vector>

// Red's, blue's on the keypad's side, blue's on the letters' side: ANNOS_RED, ANNOS_BLUE and
// ANNOS_BLUE_ALT as long as the built-in keys are in force. A key of one's own has its highlight;
// its control's caption stands at the first that has room for it.
using PlayerAnnos = std::array<std::vector<Anno>, 3>;
PlayerAnnos player_annos(KeyBindings const& keys);
