#include "input/input_conf.h"
#include "support/files.h"
#include "support/said.h"

#include <gtest/gtest.h>

#include <array>

namespace {

struct Configs {
    GamepadConfig red;
    GamepadConfig blue;
};

Configs load(std::string const& text) {
    TempDir const folder;
    write_file(folder.file("input.conf"), text);
    Configs configs;
    EXPECT_TRUE(load_input_conf(folder.file("input.conf"), configs.red, configs.blue));
    return configs;
}

// A record in one line: device, what steers, accelerate, brake.
std::string told(GamepadConfig const& c) {
    if (!c.enabled) return "off";
    std::string const turn = c.turn_hat >= 0 ? "hat" + std::to_string(c.turn_hat) : "hat-";
    return c.device + " axis" + std::to_string(c.turn_axis) + " " + turn + " " +
           std::to_string(c.accel_button) + " " + std::to_string(c.brake_button);
}

TEST(InputConf, ReadsBothSectionsInAnyDress) {
    Configs const c = load("; pads\n"
                           "brake = button9\n"
                           " [RED]\t\r\n"
                           "device = js1 ; my pad\r\n"
                           "Accelerate=button3\n"
                           "brake =\t1 # the small one\n"
                           "TURN=HAT1\n"
                           "nonsense\n"
                           "lights = button4\n"
                           "[ blue ]\n"
                           "device = pad=2\n"
                           "turn = axis2");
    EXPECT_EQ(told(c.red), "js1 axis-1 hat1 3 1");
    EXPECT_EQ(told(c.blue), "pad=2 axis2 hat- -1 -1");
}

TEST(InputConf, SectionsStartAgainAndTheLastSteeringHolds) {
    struct {
        char const* text;
        char const* red;
        char const* blue;
    } const cases[] = {
        {"[blue]\n", "off", " axis-1 hat- -1 -1"},
        {"[red]\ndevice=js0\nbrake=2\n[red]\naccelerate=5\n[green]\naccelerate=6\n"
         "[]\naccelerate=7\n[red\naccelerate=8\n",
         " axis-1 hat- 5 -1", "off"},
        {"[red]\nturn=axis0\nturn=hat2\n[blue]\nturn=hat2\nturn=2\n", " axis-1 hat2 -1 -1",
         " axis2 hat- -1 -1"},
        {"[red]\nturn=hat1\nturn=left\n", " axis-1 hat- -1 -1", "off"},
    };
    for (auto const& [text, red, blue] : cases) {
        Configs const c = load(text);
        EXPECT_EQ(told(c.red), red) << text;
        EXPECT_EQ(told(c.blue), blue) << text;
    }
    Configs kept;
    kept.red.device = "kept";
    EXPECT_FALSE(load_input_conf("no/such/input.conf", kept.red, kept.blue));
    EXPECT_EQ(kept.red.device, "kept");
}

TEST(InputConf, NumbersStartAtTheFirstDigit) {
    EXPECT_EQ(parse_indexed("left"), -1);
    EXPECT_EQ(parse_indexed("js10b"), 10);
    EXPECT_EQ(parse_indexed("-7"), 7);
    EXPECT_EQ(parse_indexed("button2147483647"), 2147483647);
    EXPECT_EQ(parse_indexed("button2147483648"), -1);
}

// The keys of a control in force with a file of these lines, by SDL's names, and what was told.
struct OwnKeys {
    char const* conf;
    std::size_t player;
    Control control;
    char const* names;
    char const* told; // a part of it; empty for nothing at all
};

constexpr std::array OWN_KEYS{
    OwnKeys{"", 0, Control::Left, "Z ", ""},
    OwnKeys{"[red]\nleft = a , Keypad 5\n", 0, Control::Left, "A Keypad 5 ", ""},
    OwnKeys{"[blue]\nleft = Enter\naccelerate = B\n", 1, Control::Left, "Return ", ""},
    OwnKeys{"[red]\nleft = A\n", 0, Control::Right, "X ", ""},
    OwnKeys{"[red]\nleft = X\nright = Z\n", 0, Control::Left, "X ", ""}, // changed places
    OwnKeys{"[blue]\nbrake=Semicolon,Comma\nleft=U\n", 1, Control::Brake, "; , ", ""},
    OwnKeys{"[red]\n\nbrake = Nonsense\n", 0, Control::Brake, "C ",
            "input.conf:3: brake: no key is named \"Nonsense\" — the built-in key stays\n"},
    OwnKeys{"[red]\nbrake = M, S\n", 0, Control::Brake, "S ", "\"M\" is a key of the race"},
    OwnKeys{"[red]\nleft = F\n", 0, Control::Left, "Z ",
            ":2: left: \"F\" is already red accelerate"},
    OwnKeys{"[red]\nleft=A\n[blue]\nleft=A\n", 1, Control::Left, "Keypad 1 , ",
            ":4: left: \"A\" is already red left"},
    // Red's first wish falls, so its built-in key is back, and blue's wish for that key falls too.
    OwnKeys{"[red]\nleft=F\n[blue]\nleft=Z\n", 1, Control::Left, "Keypad 1 , ", "already red left"},
    OwnKeys{"[red]\nleft=A\n[red]\nright=S\n", 0, Control::Left, "Z ", ""},
    OwnKeys{"[red]\nleft=A\n[other]\nright=S\n", 0, Control::Right, "X ", ""},
    // With a device, words with digits are buttons, as they always were.
    OwnKeys{"[red]\naccelerate=button3\ndevice=js0\n", 0, Control::Accelerate, "F ", ""},
    OwnKeys{"[red]\naccelerate=F1, Space\ndevice=js0\n", 0, Control::Accelerate, "Space ", ""},
};

TEST(InputConf, OwnKeysTakeTheBuiltInOnesPlacesUnlessTwoControlsWouldShareOne) {
    TempDir const folder;
    for (OwnKeys const& c : OWN_KEYS) {
        SCOPED_TRACE(c.conf);
        write_file(folder.file("input.conf"), c.conf);
        KeyBindings keys;
        std::string const told =
            errors_of([&] { keys = load_own_keys(folder.file("input.conf")); });
        std::string names;
        for (SDL_Scancode const key : keys_of(keys.at(c.player), c.control)) {
            names += SDL_GetScancodeName(key) + std::string(" ");
        }
        EXPECT_EQ(names, c.names);
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_EQ(told.empty(), *c.told == '\0') << told;
    }
}

} // namespace
