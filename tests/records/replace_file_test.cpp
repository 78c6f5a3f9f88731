// What may happen to a save: the program killed in the middle of it, and no room on the disk.

#include "platform/files.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/recovery.h"
#include "records/replace_file.h"
#include "support/child.h"
#include "support/files.h"
#include "support/records.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int CANNOT_TRY = 77;
constexpr std::size_t LAP_FRAMES = 20'000;
constexpr int LAPS = 2000;

// A lap whose every frame carries `mark`, so that a mixture of two laps shows.
std::vector<CarState> marked_lap(double mark) {
    std::vector<CarState> lap(LAP_FRAMES);
    for (CarState& frame : lap) frame.x = mark;
    return lap;
}

BestLapTable marked_table(double mark) {
    BestLapTable table;
    for (int slot = 1; slot <= LAPS; ++slot) table["Gadget"][slot] = {mark, "some.ghost.trace"};
    return table;
}

// Starts a program beside this one and waits until it has begun; `go_on` runs again and again.
template <typename Begin, typename GoOn>
pid_t start(Begin const& begin, GoOn const& go_on) {
    std::array<int, 2> ready{};
    EXPECT_EQ(pipe(ready.data()), 0);
    pid_t const child = fork();
    if (child == 0) {
        begin();
        if (write(ready[1], "!", 1) != 1) _exit(1);
        for (;;) go_on();
    }
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
    close(ready[1]);
    return child;
}

void stop(pid_t child) { // however it ends
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

void expect_whole_table() {
    BestLapTable table;
    ASSERT_TRUE(load_best_lap_table(table));
    ASSERT_EQ(table["Gadget"].size(), std::size_t{LAPS});
    for (auto const& [slot, entry] : table["Gadget"]) {
        ASSERT_EQ(entry.seconds, table["Gadget"][1].seconds);
        ASSERT_EQ(entry.trace_file, "some.ghost.trace");
    }
}

void expect_whole_ghost(std::string const& path) {
    std::vector<CarState> frames;
    ASSERT_TRUE(load_ghost_trace(path, frames, nullptr));
    ASSERT_EQ(frames.size(), LAP_FRAMES);
    for (CarState const& frame : frames) ASSERT_EQ(frame.x, frames[0].x);
}

// The status of a child that tries to replace a small table and ghost by large ones. 0 if both
// attempts failed as they should and left the old files, and nothing else.
int try_without_room(fs::path const& folder) {
    if (save_best_lap_table(marked_table(2.0))) return 1;
    if (save_ghost_trace(folder / "ghost", marked_lap(2.0), 10)) return 2;
    BestLapTable table;
    if (!load_best_lap_table(table) || table["Old"][1].seconds != 60.5) return 3;
    std::vector<CarState> frames;
    if (!load_ghost_trace(folder / "ghost", frames, nullptr) || frames.size() != 10) return 4;
    return files_in(folder) == 2 ? 0 : 5;
}

bool lay_down_old_records(fs::path const& folder) {
    bool const saved = save_best_lap_table({{"Old", {{1, {60.5, "ghost"}}}}}) &&
                       save_ghost_trace(folder / "ghost", std::vector<CarState>(10), 10);
    flush_replaced_files();
    return saved;
}

// A file system of 32 KiB over the folder, seen by this process alone.
bool mount_small_disk(fs::path const& folder) {
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
    return mount("none", folder.c_str(), "tmpfs", 0, "size=32k") == 0;
}

using ReplaceFile = RecordsTest;

} // namespace

TEST_F(ReplaceFile, KeepsOldRecordsWhenKilledAtAnyInstant) {
    std::string const ghost = pref_path("ghost.trace");
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        double mark = 1.0;
        auto const save = [&] {
            save_best_lap_table(marked_table(mark));
            save_ghost_trace(ghost, marked_lap(mark), 10);
            mark += 1.0;
        };
        pid_t const child = start(save, save);
        usleep(static_cast<useconds_t>(random() % 8000));
        stop(child);
        expect_whole_table();
        expect_whole_ghost(ghost);
        recover_records(folder);
        ASSERT_EQ(files_in(folder), 2U) << "table and ghost alone";
        expect_whole_table();
        expect_whole_ghost(ghost);
        if (HasFatalFailure()) FAIL() << "in round " << round;
        if (round % 20 == 19) empty_folder();
    }
}

TEST_F(ReplaceFile, KeepsOldRecordsOnAFullDisk) {
    ChildResult const child = run_child([this] {
        if (!mount_small_disk(folder)) std::_Exit(CANNOT_TRY);
        std::_Exit(lay_down_old_records(folder) ? try_without_room(folder) : 6);
    });
    if (child.status == CANNOT_TRY) GTEST_SKIP() << "needs the right to mount";
    EXPECT_EQ(child.status, 0);
}

TEST_F(ReplaceFile, KeepsLinksAndPermissionsAndLeavesDevicesAlone) {
    fs::path const kept = folder / "elsewhere";
    fs::path const link = folder / "link";
    write_file(kept, "old");
    fs::permissions(kept, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("elsewhere", link);
    ASSERT_TRUE(replace_file(link, {"n", "", "ew"}));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(read_file(kept), "new");
    EXPECT_EQ(fs::status(kept).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    fs::create_symlink("/dev/full", folder / "full");
    EXPECT_FALSE(replace_file(folder / "full", {"new"}));
    flush_replaced_files();
    EXPECT_TRUE(fs::is_symlink(folder / "full"));
    EXPECT_EQ(files_in(folder), 3U);
}

TEST_F(ReplaceFile, LetsLeftoversGoOnceTheyHaveBeenRead) {
    fs::path const elsewhere = folder / "elsewhere";
    fs::create_directory(elsewhere);
    write_file(elsewhere / "laps", "[Ann]\n1: 60.000\n");
    write_file(elsewhere / "laps.12.new", "[Ann]\n1: 50.000\n2: 70.000\n3: 7");
    write_file(elsewhere / "notes.12.new", "not ours");
    fs::create_symlink("elsewhere/laps", folder / "best_lap_times.txt");
    write_file(folder / "last_player_names.txt", "Ann\nBo\n");
    write_file(folder / "last_player_names.txt.7.new", "A\nB\n");
    write_file(folder / "my.new", "not ours");

    recover_records(folder);
    EXPECT_EQ(read_file(elsewhere / "laps"), "[Ann]\n1: 50.000\n2: 70.000\n");
    EXPECT_TRUE(fs::is_symlink(folder / "best_lap_times.txt"));
    EXPECT_EQ(read_file(folder / "last_player_names.txt"), "Ann\nBo\n");
    EXPECT_EQ(files_in(elsewhere), 2U);
    EXPECT_EQ(files_in(folder), 4U);
}

TEST(EnterFolder, TellsWhetherAnotherProgramIsRunning) {
    TempDir const place;
    auto const is_alone = [&place] {
        ChildResult const child = run_child([&place] {
            enter_folder(place.path(), [] { std::_Exit(1); });
            std::_Exit(2);
        });
        return child.status == 1;
    };
    pid_t const other = start([&] { enter_folder(place.path(), [] {}); }, pause);
    EXPECT_FALSE(is_alone());
    stop(other);
    EXPECT_TRUE(is_alone());
}
