#include "records/ghost_trace.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <numbers>

namespace fs = std::filesystem;

namespace {

constexpr double PI = std::numbers::pi;
constexpr double INF = std::numeric_limits<double>::infinity();

std::vector<CarState> make_lap(std::size_t frames) {
    std::vector<CarState> lap(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        auto const d = static_cast<double>(i);
        lap[i] = {d, 2 * d, 0.3, 0.001 * d, 0.002 * d, 0.7, i % 2 == 1, i % 3 == 1};
    }
    return lap;
}

std::string head(std::uint32_t ticks, std::uint32_t frames) {
    std::array<std::uint32_t, 2> const numbers{ticks, frames};
    std::string bytes(sizeof numbers, '\0');
    std::memcpy(bytes.data(), numbers.data(), sizeof numbers);
    return bytes;
}

std::string frame_bytes(double x, double y) {
    std::string bytes(56, '\x7f'); // flags and padding of a damaged file
    std::memcpy(bytes.data(), &x, sizeof x);
    std::memcpy(bytes.data() + 8, &y, sizeof y);
    return bytes;
}

} // namespace

TEST(GhostTrace, MakesSafeFileNames) {
    EXPECT_EQ(sanitize_filename(""), "_");
    EXPECT_EQ(sanitize_filename("  "), "__");
    EXPECT_EQ(sanitize_filename("J\xc3\xb6rg-9/../Z"), "J__rg-9____Z");
    EXPECT_EQ(ghost_file_name("Ann B", "tracks/3_old.harbour.trk"), "Ann_B.old_harbour.trace");
}

TEST(GhostTrace, WritesAndReadsALap) {
    TempDir const dir;
    std::string const path = dir.file("a.trace");
    std::vector<CarState> const lap = make_lap(1000);
    ASSERT_TRUE(save_ghost_trace(path, make_lap(5), 3));
    ASSERT_TRUE(save_ghost_trace(path, lap, 10));
    EXPECT_EQ(files_in(dir.path()), 1U);
    std::string const bytes = read_file(path);
    ASSERT_EQ(bytes.size(), 8U + 56U * 1000U);
    EXPECT_EQ(bytes.substr(0, 8), head(10, 1000));
    double travel = 0.0;
    std::memcpy(&travel, &bytes[8 + 56 * 7 + 32], sizeof travel);
    EXPECT_EQ(travel, 0.014);
    EXPECT_EQ(bytes[8 + 56 * 7 + 48], 1);
    EXPECT_EQ(bytes[8 + 56 * 7 + 49], 1);

    std::vector<CarState> back;
    unsigned ticks = 0;
    ASSERT_TRUE(load_ghost_trace(path, back, &ticks));
    EXPECT_EQ(ticks, 10U);
    ASSERT_EQ(back.size(), lap.size());
    EXPECT_EQ(back[999].y, 1998.0);
    EXPECT_EQ(back[999].throttle, 0.7);
    EXPECT_TRUE(back[999].skidding);
    EXPECT_FALSE(back[999].in_wall);
}

TEST(GhostTrace, TakesEmptyLapsAndTheLimitsOfItsHead) {
    TempDir const dir;
    std::string const path = dir.file("a.trace");
    std::vector<CarState> frames;
    unsigned ticks = 9;
    ASSERT_TRUE(save_ghost_trace(path, {}, 0));
    EXPECT_EQ(read_file(path), head(1, 0));
    EXPECT_TRUE(load_ghost_trace(path, frames, nullptr));
    for (std::uint32_t const accepted : {1U, 1000U}) {
        write_file(path, head(accepted, 1) + frame_bytes(4, 5) + "trailing");
        EXPECT_TRUE(load_ghost_trace(path, frames, &ticks));
        EXPECT_EQ(ticks, accepted);
        ASSERT_EQ(frames.size(), 1U);
        EXPECT_TRUE(frames[0].skidding) << "any byte but 0 is true";
    }
    for (std::uint32_t const refused : {0U, 1001U, 0xffffffffU}) {
        write_file(path, head(refused, 1) + frame_bytes(4, 5));
        EXPECT_FALSE(load_ghost_trace(path, frames, &ticks));
        EXPECT_EQ(ticks, 1U);
        EXPECT_TRUE(frames.empty());
    }
}

TEST(GhostTrace, HoldsTenMillionFramesAndNotOneMore) {
    TempDir const dir;
    std::string const path = dir.file("a.trace");
    std::vector<CarState> frames;
    for (std::uint32_t const count : {10'000'001U, 10'000'000U}) {
        write_file(path, head(10, count));
        fs::resize_file(path, 8 + 56ULL * count); // a hole: no room on the disk
        EXPECT_EQ(load_ghost_trace(path, frames, nullptr), count == 10'000'000);
        EXPECT_EQ(frames.size(), count == 10'000'000 ? count : 0);
    }
}

TEST(GhostTrace, RefusesWhatIsNoWholeGhostAndTakesNoMemoryForIt) {
    TempDir const dir;
    std::string const path = dir.file("a.trace");
    std::vector<CarState> frames;
    std::string const whole =
        head(10, 3) + frame_bytes(0, 0) + frame_bytes(1, 1) + frame_bytes(2, 2);
    for (unsigned const length : {0U, 3U, 4U, 7U, 8U, 9U, 63U, 64U, 175U}) {
        write_file(path, whole.substr(0, length));
        frames.resize(2);
        EXPECT_FALSE(load_ghost_trace(path, frames, nullptr)) << length;
        EXPECT_TRUE(frames.empty());
    }
    write_file(path, head(10, 10'000'000) + frame_bytes(0, 0));
    std::vector<CarState> untouched;
    EXPECT_FALSE(load_ghost_trace(path, untouched, nullptr));
    EXPECT_EQ(untouched.capacity(), 0U) << "not the 560 MB that the head asks for";
    EXPECT_EQ(load_ghost_line(path).capacity(), 1U);

    EXPECT_FALSE(load_ghost_trace(dir.file("missing"), frames, nullptr));
    EXPECT_FALSE(load_ghost_trace(dir.path(), frames, nullptr));
    EXPECT_FALSE(save_ghost_trace(dir.path(), frames, 1));
    EXPECT_FALSE(save_ghost_trace(dir.file("no/folder"), frames, 1));
}

TEST(GhostTrace, GivesTheLineAsFarAsTheFileTells) {
    TempDir const dir;
    std::string const path = dir.file("a.trace");
    ASSERT_TRUE(save_ghost_trace(path, make_lap(1000), 10));
    std::vector<SDL_FPoint> line = load_ghost_line(path);
    ASSERT_EQ(line.size(), 1000U);
    EXPECT_EQ(line[700].x, 700.0F);
    EXPECT_EQ(line[700].y, 1400.0F);
    fs::resize_file(path, 8 + 56 * 400 + 30);
    EXPECT_EQ(load_ghost_line(path).size(), 400U);

    for (double const damage : {INF, -INF, std::nan(""), 1e300}) {
        write_file(path,
                   head(0, 3) + frame_bytes(1, 2) + frame_bytes(3, damage) + frame_bytes(5, 6));
        EXPECT_EQ(load_ghost_line(path).size(), 1U) << damage;
    }
    for (std::uint32_t const count : {0U, 10'000'001U}) {
        write_file(path, head(10, count) + frame_bytes(1, 2));
        EXPECT_TRUE(load_ghost_line(path).empty());
    }
    EXPECT_TRUE(load_ghost_line(dir.file("missing")).empty());
}

TEST(PickGhost, RunsOneStepBehindAndEndsWithTheLap) {
    Player player;
    player.lap_start_ms = 500.0;
    player.best_trace_substeps = 10;
    CarState pose{.speed = 42.0};
    EXPECT_FALSE(pick_ghost(player, 600.0, 10.0, 0.5, &pose)) << "no ghost at all";
    player.best_trace = make_lap(100);
    EXPECT_FALSE(pick_ghost(player, 500.0, 10.0, 0.99, &pose));
    ASSERT_TRUE(pick_ghost(player, 510.0, 10.0, 0.0, &pose));
    EXPECT_EQ(pose.x, 0.0);
    ASSERT_TRUE(pick_ghost(player, 550.0, 10.0, 0.25, &pose));
    EXPECT_DOUBLE_EQ(pose.x, 42.5);
    EXPECT_DOUBLE_EQ(pose.y, 85.0);
    EXPECT_DOUBLE_EQ(pose.heading, 0.0425);
    EXPECT_EQ(pose.speed, 42.0) << "only the pose is set";
    ASSERT_TRUE(pick_ghost(player, 600.0, 10.0, 0.95, &pose)) << "frame 99.5: the last, whole";
    EXPECT_EQ(pose.x, 99.0);
    EXPECT_EQ(pose.speed, 0.3);
    EXPECT_FALSE(pick_ghost(player, 610.0, 10.0, 0.0, &pose));
    EXPECT_FALSE(pick_ghost(player, 1e300, 10.0, 0.0, &pose));

    player.best_trace_substeps = 20; // recorded at twice the ticks: frame 40 after two steps
    ASSERT_TRUE(pick_ghost(player, 530.0, 10.0, 0.0, &pose));
    EXPECT_EQ(pose.x, 40.0);
    player.waiting_for_line = true;
    EXPECT_FALSE(pick_ghost(player, 530.0, 10.0, 0.0, &pose));
}

TEST(PickGhost, TurnsTheShortWayAndSurvivesDamagedFrames) {
    Player player;
    player.best_trace = make_lap(3);
    player.best_trace[0].heading = PI - 0.1;
    player.best_trace[1].heading = -PI + 0.1;
    CarState pose;
    ASSERT_TRUE(pick_ghost(player, 10.0, 10.0, 0.75, &pose));
    EXPECT_NEAR(pose.heading, PI + 0.05, 1e-12);
    player.best_trace[1].heading = 0.5 - 8 * PI;
    player.best_trace[0].heading = 0.0;
    ASSERT_TRUE(pick_ghost(player, 10.0, 10.0, 0.5, &pose));
    EXPECT_NEAR(pose.heading, 0.25, 1e-12);

    for (double const damage : {1e300, -1e18, INF, std::nan("")}) {
        player.best_trace[1].heading = damage;
        pick_ghost(player, 10.0, 10.0, 0.5, &pose); // must come back
    }
    player.best_trace[1] = player.best_trace[2];
    player.best_trace[1].x = INF;
    EXPECT_FALSE(pick_ghost(player, 10.0, 10.0, 0.5, &pose));
    player.best_trace[2].y = std::nan("");
    EXPECT_FALSE(pick_ghost(player, 30.0, 10.0, 0.0, &pose));
}
