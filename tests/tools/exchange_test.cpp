// Laps between friends: two preference folders are one after the other here.

#include "brindle_ghost/exchange.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/lap_file.h"
#include "support/files.h"
#include "support/records.h"
#include "support/said.h"
#include "support/tracks.h"
#include "world/car_physics.h"
#include "world/track_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

struct Exchange : RecordsTest {
    Exchange() { put_track("3_Hall", {".....", ".*!..", "....."}); }

    static void put_track(std::string const& name, std::vector<std::string> const& rows) {
        fs::create_directories("tracks");
        write_file("tracks/" + name + ".trk", track_text(rows));
    }
    // A record of `ms` milliseconds on the hall, with its ghost; the ghost's bytes.
    std::string drive(std::string const& name, int ms) const {
        std::vector<CarState> frames;
        CarState car{.x = 1.5, .y = 1.5};
        for (int tick = 0; tick < ms; ++tick) {
            physics_step_cartest(car, {.gas = tick < 20}, {});
            frames.push_back(car);
        }
        std::string const file = ghost_file_name(name, "tracks/3_Hall.trk");
        record_best_lap(name, 3, ms / 1000.0, file);
        EXPECT_TRUE(save_ghost_trace(pref_path(file.c_str()), frames, 10));
        return read_file(folder / file);
    }
    struct Said {
        int status = -1;
        std::string out;
        std::string err;
    };
    template <typename Action>
    static Said heard(Action action) {
        Said said;
        said.out = output_of([&] { said.err = errors_of([&] { said.status = action(); }); });
        return said;
    }
    Said import() const {
        return heard([&] { return import_lap(lap); });
    }

    WorkingDir dir;
    std::string lap = dir.file("ann.lap");
};

TEST_F(Exchange, AFriendGetsTheSameGhostAndKeepsTheFasterLap) {
    std::string const ghost = drive("Ann", 300);
    EXPECT_THAT(heard(list_records).out,
                AllOf(HasSubstr("Ann"), HasSubstr("Hall"), HasSubstr("0.300 s  ghost")));
    Said said = heard([&] { return export_lap("Ann", "Hall", lap); });
    EXPECT_EQ(said.status, 0) << said.err;
    EXPECT_EQ(heard([&] { return export_lap("Ann", "3", lap); }).status, 1) << "it is there";

    // At a friend's the same grid has another name and slot.
    empty_folder();
    fs::rename("tracks/3_Hall.trk", "tracks/7_Saal.trk");
    said = import();
    EXPECT_EQ(said.status, 0) << said.err;
    EXPECT_THAT(said.out, HasSubstr("now Ann's record and the best of all"));
    EXPECT_EQ(best_lap_trace("Ann", 7), "Ann.Saal.trace");
    EXPECT_EQ(read_file(folder / "Ann.Saal.trace"), ghost);
    said = import();
    EXPECT_EQ(said.status, 0);
    EXPECT_THAT(said.out, HasSubstr("Ann's record of 0.300 s on Hall stays"));

    fs::rename("tracks/7_Saal.trk", "tracks/3_Hall.trk");
    std::string const faster = drive("Ann", 250);
    import();
    EXPECT_EQ(read_file(folder / "Ann.Hall.trace"), faster);
}

TEST_F(Exchange, ALapOfAnotherGridIsRefusedByBothFingerprints) {
    drive("Ann", 300);
    export_lap("Ann", "Hall", lap);
    empty_folder();
    std::string fault;
    std::string const driven_on = fingerprint_text(unpack_lap(read_file(lap), fault)->grid);
    put_track("3_Hall", {".....", ".*!..", "...g."});
    Track changed;
    ASSERT_TRUE(load_track("tracks/3_Hall.trk", changed));
    Said const said = import();
    EXPECT_EQ(said.status, 1);
    EXPECT_THAT(said.err, AllOf(HasSubstr(driven_on),
                                HasSubstr(fingerprint_text(grid_fingerprint(changed)))));
    EXPECT_EQ(files_in(folder), 0U);
    fs::remove_all("tracks");
    EXPECT_THAT(import().err, HasSubstr("no track here has that grid"));
}

TEST_F(Exchange, WhatCannotBeSharedIsSaidAndHarmsNothing) {
    std::string const ghost = drive("Ann", 300);
    std::string const table = read_file(folder / "best_lap_times.txt");
    for (auto const& wrong :
         {std::array{"Ann", "Nowhere", "no track"}, {"Bo", "Hall", "no record"}}) {
        Said const said = heard([&] { return export_lap(wrong[0], wrong[1], lap); });
        EXPECT_EQ(said.status, 1);
        EXPECT_THAT(said.err, HasSubstr(wrong[2]));
    }
    std::string const endless = dir.file(std::string(5000, 'x'));
    EXPECT_EQ(heard([&] { return export_lap("Ann", "Hall", endless); }).status, 1);
    // Another track has taken the slot since.
    fs::rename("tracks/3_Hall.trk", "tracks/3_Mine.trk");
    EXPECT_EQ(heard([&] { return export_lap("Ann", "Mine", lap); }).status, 1);
    EXPECT_EQ(import().status, 1) << "no such file";
    EXPECT_EQ(heard([] { return import_lap("/proc/self/mem"); }).status, 1) << "the disk fails";
    write_file(lap, "brindle-lap 1\nplayer Ann\n");
    EXPECT_EQ(import().status, 1);
    EXPECT_EQ(read_file(folder / "best_lap_times.txt"), table);
    EXPECT_EQ(read_file(folder / "Ann.Hall.trace"), ghost);
}

TEST_F(Exchange, ALapThatCannotBeKeptWholeCostsNoRecord) {
    drive("Ann", 250);
    export_lap("Ann", "Hall", lap);
    empty_folder();
    std::string ghost = drive("Ann", 300);
    std::string table = read_file(folder / "best_lap_times.txt");
    fs::create_directories(folder / "Ann.Hall.trace.import/in the way");
    EXPECT_THAT(import().err, HasSubstr("the old records stand"));
    EXPECT_EQ(read_file(folder / "best_lap_times.txt"), table);
    EXPECT_EQ(read_file(folder / "Ann.Hall.trace"), ghost);
    fs::remove_all(folder / "Ann.Hall.trace.import");

    // A table that cannot be written.
    fs::rename(folder / "best_lap_times.txt", folder / "elsewhere");
    fs::create_directory(folder / "best_lap_times.txt");
    EXPECT_EQ(import().status, 1);
    EXPECT_EQ(read_file(folder / "Ann.Hall.trace"), ghost);
    EXPECT_FALSE(fs::exists(folder / "Ann.Hall.trace.import"));
}

TEST_F(Exchange, ANameThatSharesAGhostsFileDoesNotTakeIt) {
    drive("An?", 250);
    export_lap("An?", "Hall", lap);
    empty_folder();
    std::string const ghost = drive("An!", 300);
    Said const said = import();
    EXPECT_EQ(said.status, 1);
    EXPECT_THAT(said.err, AllOf(HasSubstr("An?"), HasSubstr("An!"), HasSubstr("An_.Hall.trace")));
    EXPECT_EQ(read_file(folder / "An_.Hall.trace"), ghost);
}

} // namespace
