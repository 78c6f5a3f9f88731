#include "input/controls.h"
#include "input/pressed.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

// A keyboard on which a test holds and taps keys.
struct Keyboard {
    std::array<unsigned char, SDL_NUM_SCANCODES> held{};
    std::array<bool, SDL_NUM_SCANCODES> tapped{};

    Input red(Player& player) const {
        update_red_input(player, held.data(), tapped.data());
        return player.input;
    }
    Input blue(Player& player) const {
        update_blue_input(player, held.data(), tapped.data());
        return player.input;
    }
};

struct KeyCase {
    SDL_Scancode key;
    char const* red;
    char const* blue;
};

constexpr std::array KEY_CASES = {
    KeyCase{SDL_SCANCODE_F, "g", ""},        KeyCase{SDL_SCANCODE_C, "b", ""},
    KeyCase{SDL_SCANCODE_Z, "l", ""},        KeyCase{SDL_SCANCODE_X, "r", ""},
    KeyCase{SDL_SCANCODE_KP_ENTER, "", "g"}, KeyCase{SDL_SCANCODE_APOSTROPHE, "", "g"},
    KeyCase{SDL_SCANCODE_RETURN, "", "g"},   KeyCase{SDL_SCANCODE_KP_PERIOD, "", "b"},
    KeyCase{SDL_SCANCODE_SLASH, "", "b"},    KeyCase{SDL_SCANCODE_RSHIFT, "", "b"},
    KeyCase{SDL_SCANCODE_KP_1, "", "l"},     KeyCase{SDL_SCANCODE_COMMA, "", "l"},
    KeyCase{SDL_SCANCODE_KP_2, "", "r"},     KeyCase{SDL_SCANCODE_PERIOD, "", "r"},
    KeyCase{SDL_SCANCODE_LSHIFT, "", ""},    KeyCase{SDL_SCANCODE_UNKNOWN, "", ""},
    KeyCase{SDL_SCANCODE_KP_DIVIDE, "", ""},
};

TEST(Controls, EachKeyTurnsOnOneControlOfOnePlayerHeldOrTapped) {
    Player player;
    for (KeyCase const& c : KEY_CASES) {
        Keyboard holding;
        holding.held.at(c.key) = 1;
        Keyboard tapping;
        tapping.tapped.at(c.key) = true;
        SCOPED_TRACE(SDL_GetScancodeName(c.key));
        EXPECT_EQ(on(holding.red(player)), c.red);
        EXPECT_EQ(on(tapping.red(player)), c.red);
        EXPECT_EQ(on(holding.blue(player)), c.blue);
        EXPECT_EQ(on(tapping.blue(player)), c.blue);
    }
}

TEST(Controls, InvertedGasIsOnUntilAKeyIsDown) {
    Player player;
    Keyboard keyboard;
    player.input = {true, true, true, true};
    EXPECT_EQ(on(keyboard.blue(player)), "");
    player.invert_gas = true;
    EXPECT_EQ(on(keyboard.blue(player)), "g");
    keyboard.held[SDL_SCANCODE_RETURN] = 1;
    EXPECT_EQ(on(keyboard.blue(player)), "");
    keyboard.held[SDL_SCANCODE_KP_ENTER] = 1; // two keys are still one control
    EXPECT_EQ(on(keyboard.blue(player)), "");
}

TEST(Controls, SteeringSwapsOnlyBelowZeroThrottleAndOnlyIfAsked) {
    Player player;
    Keyboard keyboard;
    keyboard.held[SDL_SCANCODE_Z] = 1;
    player.car.throttle = 0.0;
    EXPECT_EQ(on(keyboard.red(player)), "l");
    player.car.throttle = -1e-12;
    EXPECT_EQ(on(keyboard.red(player)), "r");
    player.swap_when_reversing = false;
    EXPECT_EQ(on(keyboard.red(player)), "l");
}

} // namespace
