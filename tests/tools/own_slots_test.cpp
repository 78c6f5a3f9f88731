// Where a player's track goes, and that its first course can be raced.

#include "brindle_track/first_course.h"
#include "brindle_track/own_slots.h"
#include "support/files.h"
#include "support/tracks.h"
#include "tools/courses.h"
#include "track_compiler/course_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

struct OwnSlots : testing::Test {
    void SetUp() override {
        for (fs::path const& folder : {tracks, data / "tracks"}) fs::create_directories(folder);
    }
    void ship(std::string const& track) const {
        for (char const* extension : {".trk", ".png"}) {
            write_file(data / "tracks" / (track + extension), "shipped");
            fs::create_symlink(data / "tracks" / (track + extension), tracks / (track + extension));
        }
    }
    void build(std::string const& track, fs::path const& course) const {
        write_file(tracks / (track + ".trk"), track_text({".*!."}));
        EXPECT_TRUE(remember_built(tracks, course, track + ".trk"));
    }
    SlotChoice choose(int wanted = 0, fs::path const& course = "/me/my.course") const {
        return choose_slot(tracks, data, course, "Mine", wanted);
    }

    TempDir dir;
    fs::path tracks = dir.path() / "tracks";
    fs::path data = dir.path() / "data";
};

TEST_F(OwnSlots, AnEmptySlotComesBeforeTheLastOfTheGames) {
    EXPECT_EQ(choose().slot, 1);
    for (int slot = 1; slot <= 9; ++slot) {
        if (slot != 7) ship(std::to_string(slot) + "_Shipped");
    }
    EXPECT_EQ(choose().slot, 7);
    EXPECT_EQ(choose().hides, "");
    ship("7_Shipped");
    EXPECT_EQ(choose().slot, 9);
    EXPECT_EQ(choose().hides, "Shipped");
    EXPECT_EQ(choose(2).slot, 2);
}

TEST_F(OwnSlots, ACourseBuiltAgainKeepsItsSlotAndItsTrackOnly) {
    ship("4_Shipped");
    build("4_Mine", "/me/my.course");
    EXPECT_EQ(choose().slot, 4);
    EXPECT_EQ(choose().before, "4_Mine.trk");
    EXPECT_EQ(choose(5).slot, 5);
    EXPECT_EQ(choose(5).before, "4_Mine.trk") << "it moves";
    // Another course of the same name does not write over it.
    EXPECT_EQ(choose(4, "/you/my.course").slot, 0);
    EXPECT_THAT(choose(4, "/you/my.course").problem, testing::HasSubstr("4_Mine.trk"));
    EXPECT_EQ(choose(0, "/you/my.course").slot, 1);
    // What was taken away may come back as somebody else's.
    write_file(tracks / "4_Mine.trk", track_text({"..*!"}));
    EXPECT_EQ(choose(4).slot, 0);
    fs::remove(tracks / "4_Mine.trk");
    EXPECT_EQ(choose(4).before, "");
}

TEST_F(OwnSlots, NoForeignFileGivesWay) {
    write_file(tracks / "1_Friend.trk", "a friend's");
    write_file(tracks / "2_Mine.png", "a picture without a track");
    fs::create_symlink("/nowhere", tracks / "3_Gone.trk");
    for (int slot = 1; slot <= 3; ++slot) EXPECT_EQ(choose(slot).slot, 0) << slot;
    EXPECT_EQ(choose().slot, 4);
    for (int slot = 4; slot <= 9; ++slot) {
        write_file(tracks / (std::to_string(slot) + "_Friend.trk"), "a friend's");
    }
    EXPECT_EQ(choose().slot, 0);
    EXPECT_THAT(choose().problem, testing::HasSubstr("all nine"));
}

TEST(FirstCourse, CanBeRacedInEveryTheme) {
    int themes = 0;
    for (auto const& entry : fs::directory_iterator(std::string(BRINDLE_COURSES) + "/themes")) {
        SCOPED_TRACE(entry.path());
        Faults faults;
        std::optional<Theme> const theme = parse_theme(read_file(entry.path()), faults);
        std::optional<Course> course =
            parse_course(first_course("My Track", entry.path().stem().string()), faults);
        ASSERT_TRUE(theme && course);
        EXPECT_EQ(course->name, "My Track");
        EXPECT_TRUE(compile_course(*std::move(course), *theme, GRID_REACH, faults));
        for (Fault const& fault : faults) ADD_FAILURE() << fault.line << ": " << fault.cause;
        ++themes;
    }
    EXPECT_GE(themes, 9);
}

} // namespace
