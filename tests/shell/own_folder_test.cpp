// The player's own game folder over the years: first start, own tracks, upgrades, other data.

#include "shell/own_folder.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <map>

namespace {

namespace fs = std::filesystem;

// Data as it is installed, with a track for each name. Every file's text is its own path.
void install(fs::path const& data, std::vector<std::string> const& tracks) {
    std::vector<std::string> files = {"art/a.png", "music/m.mp3", "sounds/s.mp3"};
    for (std::string const& track : tracks) {
        files.push_back("tracks/" + track + ".trk");
        files.push_back("tracks/" + track + ".png");
    }
    fs::remove_all(data);
    for (std::string const& file : files) {
        fs::create_directories((data / file).parent_path());
        write_file(data / file, (data / file).string());
    }
}

struct OwnFolderTest : testing::Test {
    // What a race would find: file name in tracks/ to its text.
    std::map<std::string, std::string> tracks() const {
        std::map<std::string, std::string> found;
        for (auto const& entry : fs::directory_iterator(own / "tracks")) {
            found[entry.path().filename()] =
                fs::exists(entry.path()) ? read_file(entry.path()) : "dangling";
        }
        return found;
    }
    std::string shipped(std::string const& track) const {
        return (data / "tracks" / track).string();
    }

    TempDir dir;
    fs::path data = dir.path() / "data";
    fs::path own = dir.path() / "home" / "game";
};

TEST_F(OwnFolderTest, AnOwnTrackHidesTheShippedOneOfItsSlotUntilItGoes) {
    install(data, {"1_Coast", "5_Snow"});
    ASSERT_TRUE(refresh_own_folder(own, data));
    EXPECT_EQ(read_file(own / "art" / "a.png"), (data / "art/a.png").string());
    EXPECT_EQ(tracks().at("5_Snow.trk"), shipped("5_Snow.trk"));

    fs::create_directories(own / ".cache/thumbs");
    write_file(own / ".cache/thumbs/5_Snow.png", "thumbnail");
    write_file(own / "tracks/5_Mine.trk", "mine");
    write_file(own / "tracks/1_Coast.course", "no track, so it hides none");
    ASSERT_TRUE(refresh_own_folder(own, data));
    EXPECT_EQ(tracks().count("5_Snow.trk") + tracks().count("5_Snow.png"), 0U);
    EXPECT_EQ(tracks().at("5_Mine.trk"), "mine");
    EXPECT_EQ(tracks().at("1_Coast.trk"), shipped("1_Coast.trk"));

    fs::remove(own / "tracks/5_Mine.trk");
    ASSERT_TRUE(refresh_own_folder(own, data));
    EXPECT_EQ(tracks().at("5_Snow.png"), shipped("5_Snow.png"));
    EXPECT_FALSE(fs::exists(own / ".cache/thumbs/5_Snow.png")) << "it may show another picture";
}

TEST_F(OwnFolderTest, AnUpgradeRenewsItsLinksAndNothingElse) {
    install(data, {"1_Coast", "2_Old", "3_Quarry"});
    ASSERT_TRUE(refresh_own_folder(own, data));
    fs::path const mod = dir.path() / "mod";
    install(mod, {"7_Mod"});
    fs::remove(own / "music");
    fs::create_symlink(mod / "music", own / "music");
    fs::create_symlink(mod / "tracks/7_Mod.trk", own / "tracks/7_Mod.trk");
    fs::remove(own / "tracks/3_Quarry.png");
    write_file(own / "tracks/3_Quarry.png", "my own picture of it");
    write_file(own / "input.conf", "[red]");

    // The new version lies elsewhere; the old one is still there, or gone.
    for (bool const old_stays : {true, false}) {
        fs::path const before = data;
        data = dir.path() / (old_stays ? "data-2" : "data-3");
        install(data, {"1_Coast", "2_New", "3_Quarry"});
        if (!old_stays) fs::remove_all(before);
        ASSERT_TRUE(refresh_own_folder(own, data));
        EXPECT_EQ(tracks(), (std::map<std::string, std::string>{
                                {"1_Coast.trk", shipped("1_Coast.trk")},
                                {"1_Coast.png", shipped("1_Coast.png")},
                                {"2_New.trk", shipped("2_New.trk")},
                                {"2_New.png", shipped("2_New.png")},
                                {"3_Quarry.trk", shipped("3_Quarry.trk")},
                                {"3_Quarry.png", "my own picture of it"},
                                {"7_Mod.trk", (mod / "tracks/7_Mod.trk").string()}}));
        EXPECT_EQ(fs::read_symlink(own / "art"), data / "art");
        EXPECT_EQ(fs::read_symlink(own / "music"), mod / "music");
        EXPECT_EQ(read_file(own / "input.conf"), "[red]");
    }
}

TEST_F(OwnFolderTest, ALinkToSomethingGoneIsRenewedWhoeverMadeIt) {
    install(data, {"1_Coast"});
    fs::create_directories(own / "tracks");
    fs::create_symlink("/nowhere/art", own / "art");
    fs::create_symlink("/nowhere/1_Coast.trk", own / "tracks/1_Coast.trk");
    ASSERT_TRUE(refresh_own_folder(own, data));
    EXPECT_EQ(fs::read_symlink(own / "art"), data / "art");
    EXPECT_EQ(tracks().at("1_Coast.trk"), shipped("1_Coast.trk"));
}

TEST_F(OwnFolderTest, FailsWhereThereCanBeNoFolder) {
    install(data, {"1_Coast"});
    write_file(dir.path() / "home", "a file, not a folder");
    EXPECT_FALSE(refresh_own_folder(own, data));
}

} // namespace
