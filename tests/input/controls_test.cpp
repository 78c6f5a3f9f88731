#include "input/controls.h"
#include "input/pressed.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
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

TEST(Controls, EachKeyTurnsOnOneControlOfOnePlayerHeldOrTapped) {
    Player player;
    using Keys = std::map<SDL_Scancode, char const*>; // all others do nothing
    Keys const red{
        {SDL_SCANCODE_F, "g"}, {SDL_SCANCODE_C, "b"}, {SDL_SCANCODE_Z, "l"}, {SDL_SCANCODE_X, "r"}};
    Keys const blue{{SDL_SCANCODE_KP_ENTER, "g"}, {SDL_SCANCODE_APOSTROPHE, "g"},
                    {SDL_SCANCODE_RETURN, "g"},   {SDL_SCANCODE_KP_PERIOD, "b"},
                    {SDL_SCANCODE_SLASH, "b"},    {SDL_SCANCODE_RSHIFT, "b"},
                    {SDL_SCANCODE_KP_1, "l"},     {SDL_SCANCODE_COMMA, "l"},
                    {SDL_SCANCODE_KP_2, "r"},     {SDL_SCANCODE_PERIOD, "r"}};
    for (int number = 0; number < SDL_NUM_SCANCODES; ++number) {
        auto const code = static_cast<SDL_Scancode>(number);
        SCOPED_TRACE(SDL_GetScancodeName(code));
        char const* const by_red = red.contains(code) ? red.at(code) : "";
        char const* const by_blue = blue.contains(code) ? blue.at(code) : "";
        Keyboard holding;
        holding.held.at(code) = 1;
        Keyboard tapping;
        tapping.tapped.at(code) = true;
        EXPECT_EQ(on(holding.red(player)), by_red);
        EXPECT_EQ(on(tapping.red(player)), by_red);
        EXPECT_EQ(on(holding.blue(player)), by_blue);
        EXPECT_EQ(on(tapping.blue(player)), by_blue);
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
