#include "base/own_place.h"
#include "support/child.h"
#include "support/files.h"
#include "support/tracks.h"
#include "world/track_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <numbers>

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

struct TrackFile : testing::Test {
    bool load(std::string const& bytes) {
        write_file(folder.file("t.trk"), bytes);
        return load_track(folder.file("t.trk"), track);
    }
    std::string row(int y) {
        auto const from = track.cells.begin() + track.width * std::ptrdiff_t{y};
        return {from, from + track.width};
    }

    TempDir folder;
    Track track;
};

TEST_F(TrackFile, RowsArePaddedCutAndCleaned) {
    ASSERT_TRUE(load("4 4\n*!..\n..\r\n......ggg\r\n....")); // no line feed at the end
    EXPECT_EQ(row(0) + "|" + row(1) + "|" + row(2) + "|" + row(3), "*!..|..gg|....|....");
    ASSERT_TRUE(load(" 2\t\n2 *!\n\xff*\n"));
    EXPECT_EQ(row(1), "\xff*");
    ASSERT_TRUE(load("2 2\r\n*!\n")); // the line feed of the head's line ends the first row
    EXPECT_EQ(row(0), "gg");
}

TEST_F(TrackFile, MarkersGiveStartLineAndHeading) {
    auto const expect = [&](std::vector<std::string> const& rows, int x, int y, double angle) {
        ASSERT_TRUE(load(track_text(rows)));
        EXPECT_EQ(track.start_x, x);
        EXPECT_EQ(track.start_y, y);
        EXPECT_DOUBLE_EQ(track.start_angle, angle);
    };
    double const pi = std::numbers::pi;
    expect({".!!!.", "..*..", "*...."}, 2, 1, pi / 2.0);
    expect({".*...", ".!!!."}, 1, 0, -pi / 2.0);
    expect({"..!.", "*.!."}, 0, 1, pi);
    expect({"!...", "!..*"}, 3, 1, 0.0);
    expect({"!...", "...*"}, 3, 1, pi);
    expect({"...!", "..!.", ".!.*"}, 3, 2, 0.75 * pi);
    EXPECT_EQ(track.goal_x1, 1);
    EXPECT_EQ(track.goal_y1, 0);
    EXPECT_EQ(track.goal_x2, 3);
    EXPECT_EQ(track.goal_y2, 2);
    EXPECT_EQ(track.grass_distance.size(), track.cells.size());
    EXPECT_GT(track.start_distance_max, 0);
}

TEST_F(TrackFile, BrokenFilesLeaveTheOldTrack) {
    ASSERT_TRUE(load("2 1\n*!\n"));
    for (std::string const& bytes :
         {""s, "\n"s, "2"s, "2 2\n*!\n"s, "0 2\n*!\n"s, "2 -2\n*!\n"s, "x 2\n*!\n"s,
          "99999999999 1\n*!\n"s, "2 1\n*.\n"s, "2 1\n!.\n"s, "\x7f\x45\x4c\x46\0\0\1\2"s,
          std::string(70000, '\0')}) {
        EXPECT_FALSE(load(bytes)) << bytes.substr(0, 20);
        EXPECT_EQ(row(0), "*!");
    }
    EXPECT_FALSE(load_track(folder.path(), track));
    EXPECT_FALSE(load_track(folder.file("none.trk"), track));
}

// Heads that promise far more than the file holds must cost nothing.
TEST_F(TrackFile, HostileHeadsTakeNoMemory) {
    ChildResult const child = run_child([this] {
        for (char const* head :
             {"1000000000 1000000000", "2147483647 2147483647", "1000000000 1", "67108864 1",
              "1 67108864", "30000 2000", "67108865 1", "1 1000000000"}) {
            if (load(std::string(head) + "\n*!\n")) std::puts(head);
        }
    });
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.out, "");
    EXPECT_LT(child.memory_kb - run_child([] {}).memory_kb, 16 * 1024);
}

TEST(TrackFiles, SlotsAndNamesComeFromFileNames) {
    WorkingDir const folder;
    EXPECT_EQ(discover_tracks(), (std::array<std::string, 10>{}));
    fs::create_directories("tracks/5_folder.trk");
    for (char const* name : {"3_coast.trk", "12_x.trk", "1_.trk", "0_zero.trk", "4_big.TRK",
                             "6_picture.png", "7-dash.trk", "9_hill.trk"}) {
        write_file(folder.path() / "tracks" / name, "");
    }
    std::array<std::string, 10> expected;
    expected[1] = "tracks/1_.trk";
    expected[3] = "tracks/3_coast.trk";
    expected[9] = "tracks/9_hill.trk";
    EXPECT_EQ(discover_tracks(), expected);

    // A track of the player's own place hides the game's of its slot.
    OWN_PLACE = folder.file("mine/");
    EXPECT_EQ(discover_tracks(), expected);
    fs::create_directories("mine/tracks");
    write_file("mine/tracks/3_mine.trk", "");
    expected[3] = OWN_PLACE + "tracks/3_mine.trk";
    EXPECT_EQ(discover_tracks(), expected);
    EXPECT_EQ(find_track_files().size(), 3U);

    for (auto const& [path, name] : {std::pair{"tracks/12_old_town.trk", "old_town"},
                                     {"tracks/coast.trk", "coast"},
                                     {"tracks/2024.trk", "2024"},
                                     {"1_.trk", ""},
                                     {"4_a.b.trk", "a.b"},
                                     {"", ""}}) {
        EXPECT_EQ(track_name_from_path(path), name);
    }
}

} // namespace
