// Descriptions that are wrong in form, and courses that could not be raced.

#include "support/files.h"
#include "tools/courses.h"
#include "track_compiler/course_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <span>

namespace {

using testing::HasSubstr;

struct Broken {
    char const* what; // in the small course
    char const* with;
    int line;
    char const* cause;
};

// Reads the small course with each thing broken, and looks at the first fault that `read` finds.
template <typename Read>
void expect_faults(std::span<Broken const> cases, Read read) {
    for (Broken const& broken : cases) {
        SCOPED_TRACE(broken.with);
        Faults faults;
        EXPECT_FALSE(read(replaced(small_course(), broken.what, broken.with), faults));
        ASSERT_FALSE(faults.empty());
        EXPECT_EQ(faults[0].line, broken.line);
        EXPECT_THAT(faults[0].cause, HasSubstr(broken.cause));
    }
}

TEST(CourseParser, TellsLineAndCauseOfEveryBadStatement) {
    constexpr std::array<Broken, 20> CASES{{
        {"width  60", "width  sixty", 4, "\"sixty\" is not a number"},
        {"width  60", "width  600", 4, "between 40 and 240"},
        {"width  60", "width", 4, "the width is missing"},
        {"width  60", "widht  60", 4, "widht: no such field"},
        {"width  60", "width  60 70", 4, "\"70\" is one value too many"},
        {"width  60", "width  nan", 4, "not a number"},
        {"\"Small Course\"", "\"Small Course", 1, "a quote is not closed"},
        {"size   800 500", "size   800 320", 3, "between 321 and 4096"},
        {"size   800 500", "# no size", 13, "the size is missing"},
        {"start  418 100", "", 13, "the start is missing"},
        {"goal   400 60 400 140", "", 13, "the goal line is missing"},
        {"start  418 100", "start  418 100\nstart 1 1", 9, "one start"},
        {"width 80", "wide 80", 11, "\"wide\" is none of"},
        {"pine   400 250 30", "scatter house 3 2 5", 13, "no kind of round thing"},
        {"pine   400 250 30", "scatter pine 4e22 3 5", 13, "between 1 and"},
        {"pine   400 250 30", "area lava 1 1 2 2 3 1", 13, "no kind of ground"},
        {"pine   400 250 30", "lane canal 12 1 1 2 2", 13, "no kind of lane"},
        {"pine   400 250 30", "lane rails 12 1 1", 13, "at least two points"},
        {"pine   400 250 30", "row house 20 10 1 1 2 2", 13, "no kind of round thing"},
        {"pine   400 250 30", "row tree 20 10 1 1 2", 13, "the point's y is missing"},
    }};
    expect_faults(CASES, [](std::string const& text, Faults& faults) {
        bool const good = parse_course(text, faults).has_value();
        EXPECT_EQ(faults.size(), 1U);
        return good;
    });
}

TEST(ThemeParser, TellsLineAndCauseOfABadThemeRule) {
    constexpr std::array<std::array<char const*, 2>, 5> CASES{{
        {"scatter pine 60 18 46 18", "5 numbers are needed"},
        {"scatter house 60 18 46 18 90", "no kind of round thing"},
        {"scatter pine many 18 46 18 90", "no number in its range"},
        {"scatter pine 60 46 18 18 90", "the sizes or distances are wrong"},
        {"row lamp 4 8 18", "the things do not fit"},
    }};
    std::string const good = read_file(std::string(BRINDLE_COURSES) + "/themes/coast.theme");
    auto const lines = std::count(good.begin(), good.end(), '\n');
    for (auto const& [rule, cause] : CASES) {
        SCOPED_TRACE(rule);
        Faults faults;
        EXPECT_FALSE(parse_theme(good + rule + "\n", faults));
        ASSERT_EQ(faults.size(), 1U);
        EXPECT_EQ(faults[0].line, lines + 1);
        EXPECT_THAT(faults[0].cause, HasSubstr(cause));
    }
}

TEST(CourseChecks, RefuseWhatCouldNotBeRaced) {
    constexpr std::array<Broken, 22> CASES{{
        {"point  700 400", "point  700 490", 11, "off the grid"},
        {"point  100 400", "point  700 400", 12, "two points in one place"},
        {"point  100 400", "point  100 400 radius 20", 12, "between 30 and 4000"},
        {"point  100 400", "point  100 400 radius 320", 12, "do not fit on the 300 cells"},
        {"point  100 400", "point  650 180\npoint 100 400", 11, "too tight"},
        {"point  100 400", "point  400 140\npoint 100 400", 12, "runs into itself"},
        {"goal   400 60 400 140", "goal   400 60 420 140", 7, "level or upright"},
        {"goal   400 60 400 140", "goal   400 200 400 300", 7, "does not lie on the road"},
        {"goal   400 60 400 140", "goal   400 60 400 110", 7, "from wall to wall"},
        {"goal   400 60 400 140", "goal   400 60 400 440", 7, "crosses the road twice"},
        {"goal   400 60 400 140", "goal   350 95 450 95", 7, "from wall to wall"},
        {"start  418 100", "start  382 100", 8, "2 to 40 cells past the goal line"},
        {"start  418 100", "start  445 100", 8, "2 to 40 cells past the goal line"},
        {"start  418 100", "start  418 128", 8, "does not lie on the road"},
        {"goal   400 60 400 140  # upright\nstart  418 100",
         "goal   230 60 230 140\nstart  248 100", 8, "no run-up"},
        {"pine   400 250 30", "pine   400 140 30", 13, "stands on the road"},
        {"pine   400 250 30", "fork 30 0 560 350 400 300 240 400", 13, "not lie within the road"},
        {"pine   400 250 30", "fork 30 0 240 400 400 300 560 400", 13, "not lead forwards"},
        {"pine   400 250 30", "fork 30 0 170 104 400 200 650 100", 13, "near to the goal line"},
        {"pine   400 250 30", "fork 30 0 560 400 500 200 300 200 240 400", 13, "turn back"},
        {"pine   400 250 30", "lettering 400 140 30 \"WET\"", 13, "an edge or a lane"},
        {"pine   400 250 30", "lettering 400 250 30 \"WET\"\nlane track 9 400 200 400 300", 13,
         "an edge or a lane"},
    }};
    expect_faults(CASES, compile_text);
}

TEST(TrackCompiler, NamesFileLineAndCauseAndFailsWithoutWritingATrack) {
    TempDir const dir;
    write_file(dir.file("x.course"), replaced(small_course(), "start  418", "start  382"));
    write_file(dir.file("theme.course"),
               replaced(small_course(), "plain", "\"" + std::string(5000, 't') + "\""));
    write_file(dir.file("plain.theme"),
               read_file(std::string(BRINDLE_COURSES) + "/themes/coast.theme"));
    for (auto const& [course, said] : std::map<std::string, std::string>{
             {dir.file("x.course"), ":8: start: it must lie"},
             {dir.file("theme.course"), ":2: theme: there is no file "},
             {dir.file("."), ":1: cannot be read"}}) {
        std::string const call = std::string(TRACK_COMPILER) + " " + course + " " +
                                 dir.path().string() + " " + dir.file("1_x") + " 2> " +
                                 dir.file("errors");
        int const status = std::system(call.c_str()); // NOLINT(cert-env33-c): our own program
        EXPECT_EQ(WEXITSTATUS(status), 1);
        EXPECT_THAT(read_file(dir.file("errors")), testing::StartsWith(course + said));
        EXPECT_FALSE(std::filesystem::exists(dir.file("1_x.trk")));
    }
}

} // namespace
