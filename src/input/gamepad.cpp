#include "input/gamepad.h"

#include "input/input_conf.h"

#include <cstdio>
#include <utility>

namespace {

// How far a stick must lean before it steers, of 32767.
constexpr int STEERING_THRESHOLD = 8000;

struct Steering {
    bool left = false;
    bool right = false;
};

bool within(int index, int count) {
    return index >= 0 && index < count;
}

bool button_down(SDL_Joystick* joystick, int button) {
    return within(button, SDL_JoystickNumButtons(joystick)) &&
           SDL_JoystickGetButton(joystick, button) != 0;
}

// A hat that the stick has wins over an axis.
Steering read_steering(Gamepad const& pad) {
    if (within(pad.turn_hat, SDL_JoystickNumHats(pad.joystick))) {
        int const hat = SDL_JoystickGetHat(pad.joystick, pad.turn_hat);
        return {(hat & SDL_HAT_LEFT) != 0, (hat & SDL_HAT_RIGHT) != 0};
    }
    if (within(pad.turn_axis, SDL_JoystickNumAxes(pad.joystick))) {
        int const axis = SDL_JoystickGetAxis(pad.joystick, pad.turn_axis);
        bool const left = axis < -STEERING_THRESHOLD;
        bool const right = axis > STEERING_THRESHOLD;
        return {left, right};
    }
    return {};
}

std::string steering_label(Gamepad const& pad) {
    if (pad.turn_hat >= 0) return "hat" + std::to_string(pad.turn_hat);
    if (pad.turn_axis >= 0) return "axis" + std::to_string(pad.turn_axis);
    return "none";
}

// The joystick that `device` names; null, with a line on standard error, if there is none.
SDL_Joystick* open_joystick(std::string const& device, int number) {
    if (number < 0) {
        std::fprintf(stderr, "gamepad: bad device \"%s\" (want e.g. js0) — keyboard still works\n",
                     device.c_str());
        return nullptr;
    }
    int const attached = SDL_NumJoysticks();
    if (number >= attached) {
        std::fprintf(stderr,
                     "gamepad: joystick %d not connected (%d attached) — keyboard still works\n",
                     number, attached);
        return nullptr;
    }
    SDL_Joystick* const joystick = SDL_JoystickOpen(number);
    if (joystick == nullptr) {
        std::fprintf(stderr, "gamepad: cannot open joystick %d: %s — keyboard still works\n",
                     number, SDL_GetError());
    }
    return joystick;
}

} // namespace

void Gamepad::poll() {
    if (joystick != nullptr) SDL_JoystickUpdate();
}

void Gamepad::close() {
    if (joystick == nullptr) return;
    SDL_JoystickClose(joystick);
    joystick = nullptr;
}

void open_gamepad(Gamepad& pad, GamepadConfig const& config) {
    pad = {config.enabled,      config.device,       config.turn_axis, config.turn_hat,
           config.accel_button, config.brake_button, nullptr};
    if (!pad.enabled || pad.device.empty()) return;
    int const number = parse_indexed(pad.device);
    pad.joystick = open_joystick(pad.device, number);
    if (pad.joystick == nullptr) return;
    char const* const name = SDL_JoystickName(pad.joystick);
    std::printf("gamepad: joystick %d = \"%s\" (turn %s, accel button%d, brake button%d)\n", number,
                name != nullptr ? name : "unknown", steering_label(pad).c_str(), pad.accel_button,
                pad.brake_button);
    std::fflush(stdout);
}

void apply_gamepad(Gamepad const& pad, Input& input, bool swap_when_reversing, bool reversing) {
    if (pad.joystick == nullptr) return;
    if (button_down(pad.joystick, pad.accel_button)) input.gas = true;
    if (button_down(pad.joystick, pad.brake_button)) input.brake = true;
    Steering steering = read_steering(pad);
    if (swap_when_reversing && reversing) std::swap(steering.left, steering.right);
    if (steering.left) input.left = true;
    if (steering.right) input.right = true;
}
