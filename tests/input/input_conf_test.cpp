#include "input/input_conf.h"
#include "support/files.h"

#include <gtest/gtest.h>

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

} // namespace
