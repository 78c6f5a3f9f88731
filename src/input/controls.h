#pragma once

// From keys to a car's controls, once a displayed frame.

#include "base/player.h"
#include "input/key_bindings.h"

#include <SDL.h>

// Sets all four controls. `keys` is SDL's keyboard state, `pressed` the 512 flags of keys that
// went down since the last frame; scancode 0 stands for no key.
void update_input(Player& player, unsigned char const* keys, bool const* pressed, SDL_Scancode gas1,
                  SDL_Scancode brake1, SDL_Scancode left1, SDL_Scancode right1, SDL_Scancode gas2,
                  SDL_Scancode brake2, SDL_Scancode left2, SDL_Scancode right2, SDL_Scancode gas3,
                  SDL_Scancode brake3);

// The same with a player's keys in force.
void update_input(Player& player, unsigned char const* keys, bool const* pressed,
                  PlayerKeys const& bound);
// With each player's built-in keys.
void update_red_input(Player& red, unsigned char const* keys, bool const* pressed);
void update_blue_input(Player& blue, unsigned char const* keys, bool const* pressed);
