#include "input/gamepad_test.h"

#include "input/gamepad.h"
#include "input/pressed.h"
#include "input/virtual_stick.h"
#include "support/child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using testing::EndsWith;
using testing::HasSubstr;

constexpr int NONE = -1;

GamepadConfig config_for(std::string const& device) {
    return {true, device, 0, NONE, 2, 3};
}

class GamepadTest : public testing::Test {
protected:
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

    VirtualStick stick_; // NOLINT(cppcoreguidelines-non-private-member-variables-in-classes)
    Gamepad pad_;        // NOLINT(cppcoreguidelines-non-private-member-variables-in-classes)
};

TEST_F(GamepadTest, ButtonsTurnOnTheirControls) {
    EXPECT_EQ(controls(), "");
    stick_.button(2, true);
    EXPECT_EQ(controls(), "g");
    stick_.button(3, true);
    EXPECT_EQ(controls(), "gb");
    stick_.button(2, false);
    EXPECT_EQ(controls(), "b");
}

TEST_F(GamepadTest, AxisSteersBeyondItsThreshold) {
    stick_.axis(0, 8000);
    EXPECT_EQ(controls(), "");
    stick_.axis(0, 8001);
    EXPECT_EQ(controls(), "r");
    stick_.axis(0, -8000);
    EXPECT_EQ(controls(), "");
    stick_.axis(0, -8001);
    EXPECT_EQ(controls(), "l");
}

TEST_F(GamepadTest, SteeringSwapsOnlyWhenAskedAndReversing) {
    stick_.axis(0, 20000);
    EXPECT_EQ(controls(true, false), "r");
    EXPECT_EQ(controls(false, true), "r");
    EXPECT_EQ(controls(true, true), "l");
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

TEST_F(GamepadTest, IndicesBeyondTheStickAreIgnored) {
    stick_.axis(0, 20000);
    stick_.button(0, true);
    pad_.turn_axis = VirtualStick::AXES;
    pad_.accel_button = VirtualStick::BUTTONS;
    pad_.brake_button = NONE;
    EXPECT_EQ(controls(), "");
}

TEST_F(GamepadTest, AddsToTheKeyboardAndNeverClears) {
    stick_.axis(0, 20000);
    Input input{true, true, true, false};
    pad_.poll();
    apply_gamepad(pad_, input, false, false);
    EXPECT_EQ(on(input), "gblr");
    pad_.close();
    pad_.poll();
    Input untouched;
    apply_gamepad(pad_, untouched, false, false);
    EXPECT_EQ(on(untouched), "");
}

// Tests that count on the virtual stick being number 0, or on there being none.
class NoRealStick : public testing::Test {
protected:
    void SetUp() override {
        SDL_InitSubSystem(SDL_INIT_JOYSTICK);
        int const attached = SDL_NumJoysticks();
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
        if (attached > 0) GTEST_SKIP() << "a real joystick is plugged in";
    }
};
using OpenGamepad = NoRealStick;
using GamepadTestMode = NoRealStick;

// What open_gamepad says in a process with one stick attached.
ChildResult open_in_child(GamepadConfig const& config) {
    return run_child([&] {
        VirtualStick const stick;
        Gamepad pad;
        open_gamepad(pad, config);
        std::printf("%s\n", pad.joystick != nullptr ? "open" : "closed");
        pad.close();
    });
}

TEST_F(OpenGamepad, TellsWhatItFound) {
    ChildResult const axis = open_in_child(config_for("js0"));
    EXPECT_THAT(axis.out, testing::StartsWith("gamepad: joystick 0 = \""));
    EXPECT_THAT(axis.out, EndsWith("\" (turn axis0, accel button2, brake button3)\nopen\n"));
    GamepadConfig config = config_for("js0");
    config.turn_hat = 1;
    EXPECT_THAT(open_in_child(config).out, HasSubstr("(turn hat1, accel"));
    config = {true, "0", NONE, NONE, NONE, NONE};
    EXPECT_THAT(open_in_child(config).out, HasSubstr("(turn none, accel button-1, brake button-1"));
}

TEST_F(OpenGamepad, MissingSticksLeaveTheKeyboard) {
    ChildResult const bad = open_in_child(config_for("pad"));
    EXPECT_EQ(bad.out, "closed\n");
    EXPECT_EQ(bad.err, "gamepad: bad device \"pad\" (want e.g. js0) — keyboard still works\n");
    ChildResult const absent = open_in_child(config_for("js1"));
    EXPECT_EQ(absent.out, "closed\n");
    EXPECT_EQ(absent.err,
              "gamepad: joystick 1 not connected (1 attached) — keyboard still works\n");
    GamepadConfig off = config_for("js0");
    off.enabled = false;
    for (GamepadConfig const& silent : {off, config_for("")}) {
        ChildResult const child = open_in_child(silent);
        EXPECT_EQ(child.out, "closed\n");
        EXPECT_EQ(child.err, "");
    }
}

TEST_F(GamepadTestMode, WithoutSticksSaysSoAndEnds) {
    ChildResult const child = run_child([] {
        int const status = run_gamepad_test();
        std::fflush(nullptr);
        std::_Exit(status);
    });
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.out, "gamepad-test: 0 joystick(s) attached\n  (plug one in and rerun)\n");
}

// Moves a virtual stick one step at each update of the joysticks, and ends the process behind the
// last step.
struct Script {
    SDL_JoystickID id = -1;
    int step = 0;
};

void play_script(void* userdata) {
    auto& script = *static_cast<Script*>(userdata);
    SDL_Joystick* const stick = SDL_JoystickFromInstanceID(script.id);
    if (stick == nullptr) return;
    switch (script.step++) {
    case 1:
        SDL_JoystickSetVirtualAxis(stick, 1, 6000);
        break;
    case 2:
        SDL_JoystickSetVirtualAxis(stick, 1, 6001);
        break;
    case 3:
        SDL_JoystickSetVirtualAxis(stick, 1, 12001);
        break;
    case 4:
        SDL_JoystickSetVirtualAxis(stick, 1, -32768);
        break;
    case 5:
        SDL_JoystickSetVirtualButton(stick, 3, SDL_PRESSED);
        break;
    case 6:
        SDL_JoystickSetVirtualButton(stick, 3, SDL_RELEASED);
        break;
    case 7:
        SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_UP);
        break;
    case 8:
        SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_RIGHTUP);
        break;
    case 9:
        SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_CENTERED);
        break;
    case 12:
        std::fflush(nullptr);
        std::_Exit(EXIT_SUCCESS);
    default:
        break;
    }
}

TEST_F(GamepadTestMode, PrintsEachChangeOnce) {
    ChildResult const child = run_child([] {
        SDL_InitSubSystem(SDL_INIT_JOYSTICK);
        Script script;
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
