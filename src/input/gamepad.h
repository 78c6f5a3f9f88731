#pragma once

// One player's joystick and its mapping. Keyboard and gamepad add up.

#include "base/car_state.h"

#include <SDL.h>

#include <string>

// One player's section of input.conf.
struct GamepadConfig {
    bool enabled = false; // the section was present
    std::string device;   // such as "js0"
    int turn_axis = -1;   // indices, -1 for none
    int turn_hat = -1;
    int accel_button = -1;
    int brake_button = -1;
};

struct Gamepad {
    bool enabled = false;
    std::string device;
    int turn_axis = -1;
    int turn_hat = -1;
    int accel_button = -1;
    int brake_button = -1;
    SDL_Joystick* joystick = nullptr; // null while none is open: nothing below does anything then

    void poll();
    void close();
};

// Takes over the configuration and opens the joystick; a missing one costs a line on standard
// error and the keyboard still works.
void open_gamepad(Gamepad& pad, GamepadConfig const& config);

// Turns on the controls that the pad holds; never clears any.
void apply_gamepad(Gamepad const& pad, Input& input, bool swap_when_reversing, bool reversing);
