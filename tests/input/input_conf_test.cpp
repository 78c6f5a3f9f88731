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
    EXPECT_TRUE(c.red.enabled);
    EXPECT_EQ(c.red.device, "js1");
    EXPECT_EQ(c.red.accel_button, 3);
    EXPECT_EQ(c.red.brake_button, 1);
    EXPECT_EQ(c.red.turn_hat, 1);
    EXPECT_EQ(c.red.turn_axis, -1);
    EXPECT_TRUE(c.blue.enabled);
    EXPECT_EQ(c.blue.device, "pad=2");
    EXPECT_EQ(c.blue.turn_axis, 2);
    EXPECT_EQ(c.blue.turn_hat, -1);
    EXPECT_EQ(c.blue.accel_button, -1);
}

TEST(InputConf, MissingSectionKeepsItsRecordAndAnEmptyOneEnables) {
    Configs const c = load("[blue]\n");
    EXPECT_FALSE(c.red.enabled);
    EXPECT_TRUE(c.blue.enabled);
    EXPECT_EQ(c.blue.device, "");
}

TEST(InputConf, SecondSectionStartsAgainAndForeignOnesClose) {
    Configs const c = load("[red]\ndevice=js0\nbrake=2\n[red]\naccelerate=5\n"
                           "[green]\naccelerate=6\n[]\naccelerate=7\n[red\naccelerate=8\n");
    EXPECT_EQ(c.red.device, "");
    EXPECT_EQ(c.red.brake_button, -1);
    EXPECT_EQ(c.red.accel_button, 5);
}

TEST(InputConf, LaterTurnOverridesTheEarlier) {
    Configs const c = load("[red]\nturn=axis0\nturn=hat2\n[blue]\nturn=hat2\nturn=2\n");
    EXPECT_EQ(c.red.turn_axis, -1);
    EXPECT_EQ(c.red.turn_hat, 2);
    EXPECT_EQ(c.blue.turn_axis, 2);
    EXPECT_EQ(c.blue.turn_hat, -1);
    Configs const none = load("[red]\nturn=hat1\nturn=left\n");
    EXPECT_EQ(none.red.turn_axis, -1);
    EXPECT_EQ(none.red.turn_hat, -1);
}

TEST(InputConf, MissingFileIsToldAndChangesNothing) {
    Configs c;
    c.red.device = "kept";
    EXPECT_FALSE(load_input_conf("no/such/input.conf", c.red, c.blue));
    EXPECT_EQ(c.red.device, "kept");
}

TEST(InputConf, NumbersStartAtTheFirstDigit) {
    EXPECT_EQ(parse_indexed(""), -1);
    EXPECT_EQ(parse_indexed("left"), -1);
    EXPECT_EQ(parse_indexed("js10b"), 10);
    EXPECT_EQ(parse_indexed("-7"), 7);
    EXPECT_EQ(parse_indexed("button2147483647"), 2147483647);
    EXPECT_EQ(parse_indexed("button2147483648"), -1);
    EXPECT_EQ(parse_indexed("button99999999999"), -1);
}

TEST(InputConf, TrimTakesBlanksOffBothEndsOnly) {
    EXPECT_EQ(trim(" \t\r\na b\n\r\t "), "a b");
    EXPECT_EQ(trim(" \n"), "");
    EXPECT_EQ(trim("\va"), "\va");
}

} // namespace
