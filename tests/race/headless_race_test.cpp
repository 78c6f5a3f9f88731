#include "race/headless_race.h"
#include "race/race_tick.h"
#include "support/allocations.h"
#include "support/tracks.h"

#include <gtest/gtest.h>

namespace {

// The built-in course is made for a drawing of 17 pixels a cell.
struct Headless : testing::Test {
    Headless() { PIXELS_PER_CELL = 17; }
};

// The fingerprint of every step of a race on the built-in course.
std::uint64_t race_hash(HeadlessRace& race, HeadlessSetup const& setup, int steps) {
    headless_start(race, make_default_track(), setup);
    std::uint64_t hash = HEADLESS_HASH_START;
    for (int i = 0; i < steps; ++i) {
        headless_step(race);
        hash = headless_hash(race, hash);
    }
    return hash;
}

TEST_F(Headless, RacesAreTheSameBitForBitInEveryBuild) {
    HeadlessRace race;
    std::uint64_t const clean = race_hash(race, {.laps = 10}, 6000);
    EXPECT_EQ(race.log[0].lap_ms.size(), 10U);
    EXPECT_NE(race.sim.p2.view.finished_ms, 0U);
    EXPECT_LT(race.log[0].stuck_seconds, 1.0);
    HeadlessRace bumps;
    std::uint64_t const rough = race_hash(bumps, {.arcade = true}, 6000);
    EXPECT_GT(bumps.log[0].hits, race.log[0].hits);
    EXPECT_EQ(clean, 3618737213080626042ULL);
    EXPECT_EQ(rough, 407318626208070980ULL);
}

TEST_F(Headless, TicksAllocateNothingButTheirRecording) {
    HeadlessRace race;
    headless_start(race, make_default_track(), {});
    RaceContext context{race.sim, race.track, race.events, 1, false, 10};
    headless_run(race, 5.0);
    for (Player* player : {&race.sim.p1, &race.sim.p2}) {
        player->input = {.gas = true, .right = true}; // into the walls, too
        player->trace.clear();
        player->trace.shrink_to_fit();
        player->trace.reserve(100000);
        race.events.clear();
        race.events.reserve(20000);
        std::uint64_t const before = allocation_count();
        for (int i = 0; i < 20000; ++i) race_tick(context, *player, i % 10);
        EXPECT_EQ(allocation_count(), before);
    }
    EXPECT_FALSE(race.events.empty());
}

} // namespace
