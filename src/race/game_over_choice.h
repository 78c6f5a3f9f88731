#pragma once

// The two ways on from game over, for a pad: drawn under the words of game over, with the focus on
// one of them, while a pad is in use.

#include "input/pads.h"

class GameLoop;

void press_pad_at_game_over(GameLoop& g, PadButton button);
void draw_game_over_choice(GameLoop& g, unsigned now);
