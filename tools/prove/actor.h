#pragma once

// Hands on the keys and the mouse of a program that is on the stage.
//
// A script is words apart by blanks:
//   F            taps the key, by SDL's name with _ for a blank: Keypad_Enter
//   +F -F        presses it, lets it go
//   *20          waits for so many frames; each word else takes one
//   =Ann         types the text
//   @40,-8       moves the mouse; @ alone clicks
//   size:W,H     resizes the window
//   pad:LINE     a line for virtual_pads.h, with _ for a blank
//   memory       prints the memory in use, in KiB, to standard output
// At its end the window is closed.

#include <SDL.h>

Uint8 const* keys_held();

void set_key(SDL_Scancode key, bool down);
void tap_key(SDL_Scancode key);
void type_words(char const* text);
void move_mouse(int dx, int dy);
void click_mouse();
void resize_window(int w, int h);
void close_window();

// Says the script's next word.
void actor_frame();
