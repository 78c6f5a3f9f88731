#include "input/gamepad_monitor.h"

#include <SDL.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

// A stick is never quite still: an axis is told again only when it has moved this far.
constexpr int AXIS_STEP = 6000;
// From here on an axis steers in the race.
constexpr int AXIS_STEERS = 8000;
constexpr Uint32 LOOK_EVERY_MS = 16;

// One open joystick and what was last told of it.
struct Stick {
    std::size_t number;
    SDL_Joystick* joystick;
    std::vector<int> axes;
    std::vector<int> buttons;
    std::vector<int> hats;
};

std::vector<int> zeros(int count) {
    return std::vector<int>(static_cast<std::size_t>(count > 0 ? count : 0));
}

char const* lean_note(int axis) {
    if (axis < -AXIS_STEERS) return " (left/up)";
    if (axis > AXIS_STEERS) return " (right/down)";
    return "";
}

char const* hat_name(int hat) {
    switch (hat) {
    case SDL_HAT_CENTERED:
        return "centered";
    case SDL_HAT_UP:
        return "UP";
    case SDL_HAT_RIGHT:
        return "RIGHT";
    case SDL_HAT_DOWN:
        return "DOWN";
    case SDL_HAT_LEFT:
        return "LEFT";
    default:
        return "diagonal";
    }
}

void report_axes(Stick& stick) {
    for (std::size_t i = 0; i < stick.axes.size(); ++i) {
        int const axis = static_cast<int>(i);
        int const value = SDL_JoystickGetAxis(stick.joystick, axis);
        if (std::abs(value - stick.axes[i]) <= AXIS_STEP) continue;
        stick.axes[i] = value;
        std::printf("joystick %zu  axis%d = %6d%s\n", stick.number, axis, value, lean_note(value));
        std::fflush(stdout);
    }
}

void report_buttons(Stick& stick) {
    for (std::size_t i = 0; i < stick.buttons.size(); ++i) {
        int const button = static_cast<int>(i);
        int const down = SDL_JoystickGetButton(stick.joystick, button);
        if (down == stick.buttons[i]) continue;
        stick.buttons[i] = down;
        std::printf("joystick %zu  button%d %s\n", stick.number, button,
                    down != 0 ? "PRESSED" : "released");
        std::fflush(stdout);
    }
}

void report_hats(Stick& stick) {
    for (std::size_t i = 0; i < stick.hats.size(); ++i) {
        int const hat = static_cast<int>(i);
        int const value = SDL_JoystickGetHat(stick.joystick, hat);
        if (value == stick.hats[i]) continue;
        stick.hats[i] = value;
        std::printf("joystick %zu  hat%d %s  (D-pad; use turn=hat%d)\n", stick.number, hat,
                    hat_name(value), hat);
        std::fflush(stdout);
    }
}

void open_stick(int number, std::vector<Stick>& sticks) {
    SDL_Joystick* const joystick = SDL_JoystickOpen(number);
    if (joystick == nullptr) {
        std::printf("  joystick %d: cannot open (%s)\n", number, SDL_GetError());
        return;
    }
    char const* const name = SDL_JoystickName(joystick);
    int const axes = SDL_JoystickNumAxes(joystick);
    int const buttons = SDL_JoystickNumButtons(joystick);
    int const hats = SDL_JoystickNumHats(joystick);
    std::printf("  joystick %d: \"%s\" — %d axes, %d buttons, %d hats\n", number,
                name != nullptr ? name : "unknown", axes, buttons, hats);
    sticks.push_back(
        {static_cast<std::size_t>(number), joystick, zeros(axes), zeros(buttons), zeros(hats)});
}

[[noreturn]] void report_for_ever(std::vector<Stick>& sticks) {
    SDL_JoystickUpdate();
    while (true) {
        for (Stick& stick : sticks) {
            report_axes(stick);
            report_buttons(stick);
            report_hats(stick);
        }
        SDL_Delay(LOOK_EVERY_MS);
        SDL_JoystickUpdate();
    }
}

} // namespace

int run_gamepad_test() {
    if (SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) {
        std::fprintf(stderr, "gamepad-test: SDL joystick init failed: %s\n", SDL_GetError());
        return 1;
    }
    // SDL has turned both into an event, which nothing here reads: they shall end the program.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    int const attached = SDL_NumJoysticks();
    std::printf("gamepad-test: %d joystick(s) attached\n", attached);
    if (attached <= 0) {
        std::printf("  (plug one in and rerun)\n");
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
        return 0;
    }
    std::vector<Stick> sticks;
    for (int number = 0; number < attached; ++number) open_stick(number, sticks);
    std::printf("\nMove a stick or press a button to see its number.\n"
                "Put these into input.conf as turn=axisN / accelerate=buttonN / brake=buttonN.\n"
                "Press Ctrl-C to quit.\n\n");
    std::fflush(stdout);
    report_for_ever(sticks);
}
