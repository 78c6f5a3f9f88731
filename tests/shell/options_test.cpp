#include "shell/options.h"
#include "support/child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

Options parse(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "./brindle-run");
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    return parse_cmdline(static_cast<int>(arguments.size()), argv.data());
}

// Parses in a process of its own, which ends with 7 if parsing comes back.
ChildResult parse_in_child(std::vector<std::string> const& arguments) {
    return run_child([&] {
        parse(arguments);
        std::fflush(nullptr);
        std::_Exit(7);
    });
}

std::string warnings(std::vector<std::string> const& arguments) {
    return parse_in_child(arguments).err;
}

TEST(Options, EachFlagSetsItsOwnFieldOnly) {
    struct Case {
        char const* argument;
        bool Options::*field;
    };
    std::vector<Case> const cases = {
        {"-fast", &Options::fast},
        {"-arcade", &Options::arcade},
        {"-ai", &Options::ai},
        {"-ai2", &Options::ai2},
        {"-menu", &Options::menu},
        {"-finish", &Options::finish},
        {"-winner", &Options::winner},
        {"-gamepad-test", &Options::gamepad_test},
        {"-help-screen", &Options::help_screen},
        {"-test-ghost", &Options::test_ghost},
        {"-win", &Options::win},
    };
    for (Case const& given : cases) {
        Options const o = parse({given.argument});
        for (Case const& other : cases) {
            EXPECT_EQ(o.*other.field, other.argument == given.argument)
                << given.argument << " and " << other.argument;
        }
    }
}

TEST(Options, ValuesAreTakenAndTheLastOneHolds) {
    Options const o = parse({"-race=3", "5", "-highscores=Ann", "-o", "-fast", "7", "-race=99",
                             "-highscores=Bo=b", "-o", "x.pdf"});
    EXPECT_EQ(o.race_laps, 99);
    EXPECT_EQ(o.track, 7);
    EXPECT_EQ(o.highscores_name, "Bo=b");
    EXPECT_EQ(o.highscores_out, "x.pdf");
    EXPECT_FALSE(o.fast) << "the value of -o is no option";
    EXPECT_EQ(parse({"-highscores=Ann", "-highscores="}).highscores_name, "");
}

TEST(Options, WhatCannotBeReadIsReportedAndReadingGoesOn) {
    for (char const* bad : {"-race=0", "-race=100", "-race=5x", "-race=", "-race=-3",
                            "-race=99999999999999999999", "-race=x"}) {
        EXPECT_EQ(warnings({bad}), std::string("ignoring -race= (need 1..99 laps): ") + bad + "\n");
    }
    for (char const* bad : {"0", "10", "-fastest", "-o", "", "-race", "fast", "-keysx"}) {
        EXPECT_EQ(warnings({bad}), std::string("ignoring unrecognised argument: ") + bad + "\n");
    }
    EXPECT_EQ(parse({"-race=4", "-race=100"}).race_laps, 4);
    EXPECT_TRUE(parse({"-nonsense", "-fast"}).fast);
    ChildResult const good = parse_in_child({"-fast", "9", "-race=1", "-highscores=x", "-o", "y"});
    EXPECT_EQ(good.err, "");
    EXPECT_EQ(good.status, 7);
}

TEST(Options, FirstQuestionIsAnsweredAndEndsTheProcessWell) {
    for (char const* question : {"-h", "-help", "--help"}) {
        ChildResult const child = parse_in_child({question, "-keys"});
        EXPECT_EQ(child.status, 0);
        EXPECT_THAT(child.out, StartsWith("Brindle Run - two-player split-screen rally racer\n\n"
                                          "Usage: ./brindle-run [options] [track-number]\n\n"
                                          "  1-9            start on that track"));
        EXPECT_THAT(child.out, HasSubstr("(default <NAME>_highscores.pdf)\n"));
        EXPECT_THAT(child.out, EndsWith("\n\nIn the menu, press '?' (or click the ? button) for "
                                        "the key bindings.\n"));
    }
    ChildResult const keys = parse_in_child({"-fast", "-keys", "-h"});
    EXPECT_EQ(keys.status, 0);
    EXPECT_THAT(keys.out, StartsWith("Brindle Run — all key bindings\n\n"
                                     "Usage: ./brindle-run [options] [track-number]\n"
                                     "       ./brindle-run -keys   (this listing)\n\n"
                                     "Red player:\n  Z          turn left\n"));
    EXPECT_THAT(keys.out, HasSubstr("  L          toggle \"launch\" (flying-start) mode\n"));
    EXPECT_THAT(keys.out, EndsWith("\n  - The big key list comment was removed from main after "
                                   "adding this.\n"));
}

} // namespace
