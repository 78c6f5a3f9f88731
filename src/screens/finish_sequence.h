#pragma once

// The audio celebration when the first car of a race finishes: chime, crowd, fanfare on a small
// timeline. It has no picture of its own and never holds the race up.

#include "base/finish_seq.h"

#include <SDL.h>

struct Audio;

// Loads the three sounds into their slots.
void finish_seq_load(Audio& audio);
// Starts the timeline at `now`; the first update sounds the chime.
void finish_seq_start(FinishSeq& seq, unsigned now);
// Once a frame, active or not.
void finish_seq_update(FinishSeq& seq, Audio& audio, unsigned now);
// Game over has come: the fanfare fades over `fade_ms`, or never starts. Only the first call
// counts.
void finish_seq_game_over(FinishSeq& seq, unsigned now, unsigned fade_ms);
// Silences the three slots at once.
void finish_seq_stop(FinishSeq& seq, Audio& audio);
// Seconds over which the race music fades once the sequence has started; the caller starts it.
float finish_seq_music_fade_s();

// How long the sequence shown alone lasts with the fanfare that is loaded: until that has rung out,
// and a little longer. Milliseconds.
unsigned finish_sequence_length_ms(Audio const& audio);
// Plays the timeline alone on a black screen, until the fanfare has rung out or Escape is pressed.
// False on a quit event, else true.
bool run_finish_sequence(SDL_Window* window, SDL_Renderer* renderer, Audio& audio);
