#pragma once

// A joystick that exists only in SDL, moved by a test.

#include <SDL.h>

#include <stdexcept>

class VirtualStick {
public:
    static constexpr int AXES = 3;
    static constexpr int BUTTONS = 6;
    static constexpr int HATS = 2;

    VirtualStick() {
        if (number_ < 0) throw std::runtime_error(SDL_GetError());
    }
    ~VirtualStick() {
        SDL_JoystickClose(handle_);
        SDL_JoystickDetachVirtual(number_);
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
    }
    VirtualStick(VirtualStick const&) = delete;
    VirtualStick& operator=(VirtualStick const&) = delete;

    // What input.conf calls it.
    [[nodiscard]] int number() const { return number_; }
    // The new values show after the next SDL_JoystickUpdate.
    void axis(int index, Sint16 value) { SDL_JoystickSetVirtualAxis(handle_, index, value); }
    void button(int index, bool down) {
        SDL_JoystickSetVirtualButton(handle_, index, down ? SDL_PRESSED : SDL_RELEASED);
    }
    void hat(int index, Uint8 value) { SDL_JoystickSetVirtualHat(handle_, index, value); }

private:
    static int attach() {
        SDL_InitSubSystem(SDL_INIT_JOYSTICK);
        return SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, AXES, BUTTONS, HATS);
    }

    int number_ = attach();
    SDL_Joystick* handle_ = SDL_JoystickOpen(number_);
};
