#include "race/headless_race.h"
#include "race/race_tick.h"
#include "records/lap_file.h"
#include "support/tracks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <tuple>

namespace {

// A minute of wild driving in a hall: slides, reverses, walls, and a stop. Its flags and numbers
// are those of real ticks; the padding of every hundredth frame is rubbish, as padding may be.
SharedLap wild_minute() {
    HeadlessRace race;
    headless_start(race, make_hall(700, 500), {.ai_red = false, .ai_blue = false});
    RaceContext context{race.sim, race.track, race.events, 1, false, 10};
    Player& player = race.sim.p1;
    player.trace.clear();
    for (int step = 0; step < 6000; ++step) {
        int const mood = step / 70 * 7919 % 16;
        bool const parked = step > 5000 && step < 5400;
        player.input = {!parked && mood % 5 != 0, mood % 7 == 0, mood % 3 == 1, mood % 3 == 2};
        for (int i = 0; i < 10 && !race_tick(context, player, i); ++i) {
        }
    }
    SharedLap lap{.player = "Ann [1", .track = "Hall", .frames = player.trace};
    lap.grid = grid_fingerprint(race.track);
    lap.time_ms = static_cast<std::uint32_t>(lap.frames.size());
    lap.ticks_per_step = 10;
    for (std::size_t i = 50; i < lap.frames.size(); i += 100) {
        std::memset(reinterpret_cast<char*>(&lap.frames[i]) + 52, static_cast<int>(i), 4);
    }
    return lap;
}

TEST(LapFile, GivesAMinuteBackBitForBitFromAFewKilobytes) {
    SharedLap const lap = wild_minute();
    ASSERT_EQ(lap.frames.size(), 60000U);
    std::string fault;
    std::optional<std::string> const bytes = pack_lap(lap, fault);
    ASSERT_TRUE(bytes) << fault;
    EXPECT_LT(bytes->size(), 100U << 10U);
    std::optional<SharedLap> const back = unpack_lap(*bytes, fault);
    ASSERT_TRUE(back) << fault;
    auto const head = [](SharedLap const& of) {
        return std::tie(of.player, of.track, of.grid, of.time_ms, of.ticks_per_step);
    };
    EXPECT_EQ(head(*back), head(lap));
    ASSERT_EQ(back->frames.size(), lap.frames.size());
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): bit for bit is the promise
    EXPECT_EQ(std::memcmp(back->frames.data(), lap.frames.data(), 60000 * sizeof(CarState)), 0);

    // No byte of it can change without being noticed, nor can it end early.
    for (std::size_t at = 0; at < bytes->size(); at += at < 300 ? 1 : 97) {
        std::string broken = *bytes;
        broken[at] = static_cast<char>(broken[at] ^ 0x10);
        EXPECT_FALSE(unpack_lap(broken, fault)) << at;
        EXPECT_FALSE(unpack_lap(bytes->substr(0, at), fault)) << at;
    }
}

TEST(LapFile, RefusesWhatNoCarHasDriven) {
    SharedLap good{.player = "Ann", .track = "Oval", .time_ms = 100, .frames = {}};
    good.ticks_per_step = 10;
    good.frames.resize(100);
    std::string fault;
    ASSERT_TRUE(pack_lap(good, fault)) << fault;
    auto const refuses = [&](auto&& change, char const* reason) {
        SharedLap lap = good;
        change(lap);
        fault.clear();
        EXPECT_FALSE(pack_lap(lap, fault)) << reason;
        EXPECT_THAT(fault, testing::HasSubstr(reason));
    };
    for (std::string const& name : {std::string(), std::string("An]n"), std::string(128, 'a')}) {
        refuses([&](SharedLap& lap) { lap.player = name; }, "player's name");
    }
    refuses([](SharedLap& lap) { lap.track = "a\nb"; }, "track's name");
    refuses([](SharedLap& lap) { lap.time_ms = 140; }, "time");
    refuses([](SharedLap& lap) { lap.ticks_per_step = 0; }, "ticks");
    refuses([](SharedLap& lap) { lap.time_ms = 600'001; }, "ten minutes");
    refuses([](SharedLap& lap) { lap.frames[7].heading = 1e300; }, "damaged");
    refuses([](SharedLap& lap) { lap.frames[7].x = std::nan(""); }, "damaged");
}

// Heads that promise much: the sizes are checked before anything is taken for them.
TEST(LapFile, RefusesPromisesWithoutTakingTheMemory) {
    std::string const head =
        "brindle-lap 1\nplayer Ann\ntrack Oval\ngrid 00000000000000ff\ntime 1000\nticks 10\n";
    for (char const* rest :
         {"frames 10000000\nsum 0\nbody 10000000\n", "frames 1000\nsum 0\nbody 4000000000\n",
          "frames 18446744073709551615\nsum 0\nbody 5\n", "frames -1\nsum 0\nbody 5\n",
          "frames 1000\nsum 0\nbody 1000\n", "frames 1000\nsum 0", ""}) {
        std::string fault;
        EXPECT_FALSE(unpack_lap(head + rest + "x\x9c", fault)) << rest;
        EXPECT_FALSE(fault.empty());
    }
}

} // namespace
