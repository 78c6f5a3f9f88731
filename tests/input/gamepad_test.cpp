#include "input/gamepad.h"
#include "input/gamepad_monitor.h"
#include "input/pressed.h"
#include "input/virtual_stick.h"
#include "support/child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using testing::HasSubstr;

constexpr int NONE = -1;

GamepadConfig config_for(std::string const& device) {
    return {true, device, 0, NONE, 2, 3};
}

struct GamepadTest : testing::Test {
    void SetUp() override {
        open_gamepad(pad_, config_for("js" + std::to_string(stick_.number())));
    }
    void TearDown() override { pad_.close(); }

    // The controls that are on after a poll, as letters.
    std::string controls(bool swap = false, bool reversing = false) {
        Input input;
        pad_.poll();
        apply_gamepad(pad_, input, swap, reversing);
        return on(input);
    }

    VirtualStick stick_;
    Gamepad pad_;
};

TEST_F(GamepadTest, ButtonsAndAnAxisBeyondItsThresholdTurnOnTheirControls) {
    EXPECT_EQ(controls(), "");
    stick_.button(2, true);
    EXPECT_EQ(controls(), "g");
    stick_.button(3, true);
    EXPECT_EQ(controls(), "gb");
    stick_.button(2, false);
    for (auto const& [value, on_controls] :
         {std::pair{8000, "b"}, {8001, "br"}, {-8000, "b"}, {-8001, "bl"}}) {
        stick_.axis(0, static_cast<Sint16>(value));
        EXPECT_EQ(controls(), on_controls) << value;
    }
    EXPECT_EQ(controls(true, false), "bl");
    EXPECT_EQ(controls(false, true), "bl");
    EXPECT_EQ(controls(true, true), "br") << "swapped when asked and reversing";
}

TEST_F(GamepadTest, HatInRangeWinsOverTheAxisAndDiagonalsCount) {
    stick_.axis(0, 20000);
    pad_.turn_hat = 1;
    EXPECT_EQ(controls(), "");
    stick_.hat(1, SDL_HAT_LEFTUP);
    EXPECT_EQ(controls(), "l");
    stick_.hat(1, SDL_HAT_RIGHTDOWN);
    EXPECT_EQ(controls(), "r");
    pad_.turn_hat = VirtualStick::HATS;
    stick_.axis(0, -20000);
    EXPECT_EQ(controls(), "l");
}

TEST_F(GamepadTest, IndicesBeyondTheStickAreIgnoredAndNothingIsEverCleared) {
    stick_.axis(0, 20000);
    Input input{true, true, true, false};
    pad_.poll();
    apply_gamepad(pad_, input, false, false);
    EXPECT_EQ(on(input), "gblr");
    stick_.button(0, true);
    pad_.turn_axis = VirtualStick::AXES;
    pad_.accel_button = VirtualStick::BUTTONS;
    pad_.brake_button = NONE;
    EXPECT_EQ(controls(), "");
    pad_.close();
    EXPECT_EQ(controls(), "");
}

// These count on the virtual stick being number 0.
struct OnlyStick : testing::Test {
    void SetUp() override {
        SDL_InitSubSystem(SDL_INIT_JOYSTICK);
        int const attached = SDL_NumJoysticks();
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
        if (attached > 0) GTEST_SKIP() << "a real joystick is plugged in";
    }
};

// What open_gamepad says with one stick attached, and how it leaves the pad.
std::string opened(GamepadConfig const& config) {
    ChildResult const child = run_child([&] {
        VirtualStick const stick;
        Gamepad pad;
        open_gamepad(pad, config);
        std::printf("%s\n", pad.joystick != nullptr ? "open" : "closed");
        pad.close();
    });
    return child.out + child.err;
}

TEST_F(OnlyStick, IsToldWhenItIsOpened) {
    GamepadConfig config = config_for("js0");
    EXPECT_THAT(opened(config),
                testing::MatchesRegex("gamepad: joystick 0 = \".+\" "
                                      "\\(turn axis0, accel button2, brake button3\\)\nopen\n"));
    config.turn_hat = 1;
    EXPECT_THAT(opened(config), HasSubstr("(turn hat1, accel"));
    EXPECT_THAT(opened({true, "0", NONE, NONE, NONE, NONE}),
                HasSubstr("(turn none, accel button-1, brake button-1"));
    config.enabled = false;
    EXPECT_EQ(opened(config), "closed\n");
    EXPECT_EQ(opened(config_for("")), "closed\n");
}

// What a script does to a stick before each time that its state is read, a while apart.
constexpr std::array<void (*)(SDL_Joystick*), 10> SCRIPT = {
    [](SDL_Joystick*) {},
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualAxis(stick, 1, 6000); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualAxis(stick, 1, 6001); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualAxis(stick, 1, 12001); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualAxis(stick, 1, -32768); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualButton(stick, 3, SDL_PRESSED); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualButton(stick, 3, SDL_RELEASED); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_UP); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_RIGHTUP); },
    [](SDL_Joystick* stick) { SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_CENTERED); },
};
constexpr std::size_t STEPS_TO_THE_END = SCRIPT.size() + 2;

struct ScriptedStick {
    SDL_JoystickID id = -1;
    std::size_t step = 0;
    int signal = 0; // raised before the end, 0 for none
};

// Takes the next step at each update of the joysticks, and ends the process behind the last one.
void play_script(void* userdata) {
    auto& scripted = *static_cast<ScriptedStick*>(userdata);
    SDL_Joystick* const stick = SDL_JoystickFromInstanceID(scripted.id);
    if (stick == nullptr) return;
    if (scripted.step < SCRIPT.size()) SCRIPT.at(scripted.step)(stick);
    if (++scripted.step <= STEPS_TO_THE_END) return;
    if (scripted.signal != 0) {
        std::signal(SIGALRM, SIG_IGN); // or the time limit would look like the signal's work
        std::raise(scripted.signal);
    }
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

// The gamepad test with a scripted stick that ends with `signal`, or by itself.
ChildResult test_with_script(int signal) {
    return run_child([signal] {
        SDL_InitSubSystem(SDL_INIT_JOYSTICK);
        ScriptedStick script;
        script.signal = signal;
        SDL_VirtualJoystickDesc desc{};
        desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        desc.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
        desc.naxes = 2;
        desc.nbuttons = 4;
        desc.nhats = 1;
        desc.name = "Test stick";
        desc.userdata = &script;
        desc.Update = play_script;
        script.id = SDL_JoystickGetDeviceInstanceID(SDL_JoystickAttachVirtualEx(&desc));
        run_gamepad_test();
    });
}

TEST_F(OnlyStick, IsTestedUntilCtrlC) {
    for (int const signal : {SIGINT, SIGTERM}) EXPECT_EQ(test_with_script(signal).status, -1);
}

TEST_F(OnlyStick, HasEachChangePrintedOnce) {
    ChildResult const child = test_with_script(0);
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.out,
              "gamepad-test: 1 joystick(s) attached\n"
              "  joystick 0: \"Test stick\" — 2 axes, 4 buttons, 1 hats\n"
              "\nMove a stick or press a button to see its number.\n"
              "Put these into input.conf as turn=axisN / accelerate=buttonN / brake=buttonN.\n"
              "Press Ctrl-C to quit.\n\n"
              "joystick 0  axis1 =   6001\n"
              "joystick 0  axis1 = -32768 (left/up)\n"
              "joystick 0  button3 PRESSED\n"
              "joystick 0  button3 released\n"
              "joystick 0  hat0 UP  (D-pad; use turn=hat0)\n"
              "joystick 0  hat0 diagonal  (D-pad; use turn=hat0)\n"
              "joystick 0  hat0 centered  (D-pad; use turn=hat0)\n");
}

} // namespace
