#include "records/ghost_trace.h"
#include "records/replace_file.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <numbers>

namespace fs = std::filesystem;

namespace {

constexpr double PI = std::numbers::pi;
constexpr double INF = std::numeric_limits<double>::infinity();
constexpr std::uint32_t MOST_FRAMES = 10'000'000;

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
    return {reinterpret_cast<char const*>(numbers.data()), sizeof numbers};
}

std::string frame_bytes(double x, double y) {
    std::string bytes(56, '\x7f'); // flags and padding of a damaged file
    std::memcpy(bytes.data(), &x, sizeof x);
    std::memcpy(bytes.data() + 8, &y, sizeof y);
    return bytes;
}

struct GhostTrace : testing::Test {
    bool load(std::string const& bytes) {
        write_file(path, bytes);
        return load_ghost_trace(path, frames, &ticks);
    }

    TempDir dir;
    std::string path = dir.file("a.trace");
    std::vector<CarState> frames;
    unsigned ticks = 0;
};

} // namespace

TEST_F(GhostTrace, MakesSafeFileNames) {
    EXPECT_EQ(sanitize_filename(""), "_");
    EXPECT_EQ(sanitize_filename("J\xc3\xb6rg-9/../Z"), "J__rg-9____Z");
    EXPECT_EQ(ghost_file_name("Ann B", "tracks/3_old.harbour.trk"), "Ann_B.old_harbour.trace");
}

TEST_F(GhostTrace, WritesAndReadsALap) {
    ASSERT_TRUE(save_ghost_trace(path, make_lap(5), 3));
    ASSERT_TRUE(save_ghost_trace(path, make_lap(1000), 10));
    flush_replaced_files();
    EXPECT_EQ(files_in(dir.path()), 1U);
    std::string const bytes = read_file(path);
    ASSERT_EQ(bytes.size(), 8U + 56U * 1000U);
    EXPECT_EQ(bytes.substr(0, 8), head(10, 1000));
    std::array<double, 6> seventh{};
    std::memcpy(seventh.data(), &bytes[8 + 56 * 7], sizeof seventh);
    EXPECT_EQ(seventh, (std::array<double, 6>{7.0, 14.0, 0.3, 0.007, 0.014, 0.7}));
    EXPECT_EQ(bytes.substr(8 + 56 * 7 + 48, 2), "\1\1");

    ASSERT_TRUE(load_ghost_trace(path, frames, &ticks));
    EXPECT_EQ(ticks, 10U);
    ASSERT_EQ(frames.size(), 1000U);
    EXPECT_EQ(frames[999].y, 1998.0);
    EXPECT_EQ(frames[999].throttle, 0.7);
    EXPECT_TRUE(frames[999].skidding);
    EXPECT_FALSE(frames[999].in_wall);
}

TEST_F(GhostTrace, KeepsToTheLimitsOfItsHead) {
    ASSERT_TRUE(save_ghost_trace(path, {}, 0));
    EXPECT_EQ(read_file(path), head(1, 0));
    EXPECT_TRUE(load_ghost_trace(path, frames, nullptr));
    for (std::uint32_t const said : {0U, 1U, 1000U, 1001U, 0xffffffffU}) {
        bool const fits = said == 1 || said == 1000;
        EXPECT_EQ(load(head(said, 1) + frame_bytes(4, 5) + "trailing"), fits);
        EXPECT_EQ(ticks, fits ? said : 1);
        EXPECT_EQ(frames.size(), fits ? 1 : 0);
        EXPECT_TRUE(!fits || frames.at(0).skidding) << "any byte but 0 is true";
    }
    for (std::uint32_t const count : {MOST_FRAMES + 1, MOST_FRAMES}) {
        write_file(path, head(10, count));
        fs::resize_file(path, 8 + 56ULL * count); // a hole: no room on the disk
        EXPECT_EQ(load_ghost_trace(path, frames, nullptr), count == MOST_FRAMES);
        EXPECT_EQ(frames.size(), count == MOST_FRAMES ? count : 0);
    }
}

TEST_F(GhostTrace, RefusesWhatIsNoWholeGhostAndTakesNoMemoryForIt) {
    EXPECT_FALSE(load(head(10, MOST_FRAMES) + frame_bytes(0, 0)));
    EXPECT_EQ(frames.capacity(), 0U) << "not the 560 MB that the head asks for";
    EXPECT_EQ(load_ghost_line(path).capacity(), 1U);

    std::string const whole = head(10, 2) + frame_bytes(0, 0) + frame_bytes(1, 1);
    for (unsigned const length : {0U, 3U, 4U, 7U, 8U, 9U, 64U, 119U}) {
        frames.resize(2);
        EXPECT_FALSE(load(whole.substr(0, length))) << length;
        EXPECT_TRUE(frames.empty());
    }
    for (std::string const& no_file : {dir.file("missing"), dir.path().string()}) {
        EXPECT_FALSE(load_ghost_trace(no_file, frames, nullptr));
        EXPECT_TRUE(load_ghost_line(no_file).empty());
    }
    EXPECT_FALSE(save_ghost_trace(dir.path(), frames, 1));
    EXPECT_FALSE(save_ghost_trace(dir.file("no/folder"), frames, 1));
}

TEST_F(GhostTrace, GivesTheLineAsFarAsTheFileTells) {
    ASSERT_TRUE(save_ghost_trace(path, make_lap(1000), 10));
    std::vector<SDL_FPoint> const line = load_ghost_line(path);
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
    write_file(path, head(10, MOST_FRAMES + 1) + frame_bytes(1, 2));
    EXPECT_TRUE(load_ghost_line(path).empty());
}

TEST(PickGhost, RunsOneStepBehindAndEndsWithTheLap) {
    Player player;
    player.lap_start_ms = 500.0;
    player.best_trace_substeps = 10;
    CarState pose{.speed = 42.0};
    auto const picks = [&](double now, double alpha) {
        return pick_ghost(player, now, 10.0, alpha, &pose);
    };
    EXPECT_FALSE(picks(600.0, 0.5)) << "no ghost at all";
    player.best_trace = make_lap(100);
    EXPECT_FALSE(picks(500.0, 0.99));
    ASSERT_TRUE(picks(510.0, 0.0));
    EXPECT_EQ(pose.x, 0.0);
    ASSERT_TRUE(picks(550.0, 0.25));
    EXPECT_DOUBLE_EQ(pose.x, 42.5);
    EXPECT_DOUBLE_EQ(pose.y, 85.0);
    EXPECT_DOUBLE_EQ(pose.heading, 0.0425);
    EXPECT_EQ(pose.speed, 42.0) << "only the pose is set";
    ASSERT_TRUE(picks(600.0, 0.95)) << "frame 99.5: the last, whole";
    EXPECT_EQ(pose.x, 99.0);
    EXPECT_EQ(pose.speed, 0.3);
    EXPECT_FALSE(picks(610.0, 0.0));
    EXPECT_FALSE(picks(1e300, 0.0));

    player.best_trace_substeps = 20; // recorded at twice the ticks: frame 40 after two steps
    ASSERT_TRUE(picks(530.0, 0.0));
    EXPECT_EQ(pose.x, 40.0);
    player.waiting_for_line = true;
    EXPECT_FALSE(picks(530.0, 0.0));
}

TEST(PickGhost, TurnsTheShortWayAndSurvivesDamagedFrames) {
    Player player;
    player.best_trace = make_lap(3);
    CarState pose;
    for (auto const& [from, to, middle] :
         {std::array{PI - 0.1, -PI + 0.2, PI + 0.05}, {0.0, 0.5 - 8 * PI, 0.25}}) {
        player.best_trace[0].heading = from;
        player.best_trace[1].heading = to;
        ASSERT_TRUE(pick_ghost(player, 10.0, 10.0, 0.5, &pose));
        EXPECT_NEAR(pose.heading, middle, 1e-12);
    }
    for (double const damage : {1e300, -1e18, INF, std::nan("")}) {
        player.best_trace[1].heading = damage;
        pick_ghost(player, 10.0, 10.0, 0.5, &pose); // must come back
    }
    player.best_trace[1] = {.x = INF};
    EXPECT_FALSE(pick_ghost(player, 10.0, 10.0, 0.5, &pose));
    player.best_trace[2].y = std::nan("");
    EXPECT_FALSE(pick_ghost(player, 30.0, 10.0, 0.0, &pose));
}
