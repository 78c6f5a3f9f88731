#include "race/ghost_gap.h"
#include "race/headless_race.h"
#include "race/race_tick.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

// The computer's best lap of the built-in course, recorded at 1000 Hz.
struct GhostGapTest : testing::Test {
    static void SetUpTestSuite() {
        race = std::make_unique<HeadlessRace>();
        headless_start(*race, make_default_track(), {.ai_blue = false, .laps = 3});
        headless_run(*race, 200.0);
    }
    static void TearDownTestSuite() { race.reset(); }

    GhostGapTest() { set_ghost(gap, race->track, lap(), race->sim.p1.best_trace_substeps); }

    static std::vector<CarState> const& lap() { return race->sim.p1.best_trace; }

    // Drives the ghost's own lap, `late` ms behind it, in frames of 16 ms; the shown gaps.
    std::set<long> drive(double late, std::size_t from, std::size_t to) {
        std::set<long> shown;
        for (std::size_t k = from; k < to; k += 16) {
            update_gap(gap, race->track, lap()[k], static_cast<double>(k) + late, tick += 16);
            if (gap.shows) shown.insert(std::lround(gap.gap_ms));
            if (gap.split_tick == tick) splits.push_back(gap.split_ms);
        }
        return shown;
    }

    static std::unique_ptr<HeadlessRace> race;
    GhostGap gap;
    std::uint32_t tick = 1000;
    std::vector<double> splits;
};

std::unique_ptr<HeadlessRace> GhostGapTest::race;

} // namespace

TEST_F(GhostGapTest, IsTheSameAtEveryPlaceForWhoFollowsTheGhostsWay) {
    ASSERT_GT(lap().size(), 3000U);
    for (double const late : {0.0, 730.0, -410.0}) {
        start_gap(gap);
        splits.clear();
        for (long const shown : drive(late, late < 0.0 ? 416 : 0, lap().size())) {
            EXPECT_NEAR(static_cast<double>(shown), late, 2.0);
        }
        ASSERT_EQ(splits.size(), 3U);
        for (double const split : splits) EXPECT_NEAR(split, late, 1.0);
        end_gap(gap, static_cast<double>(lap().size()) + late, tick);
        EXPECT_EQ(gap.split_quarter, 4);
        EXPECT_DOUBLE_EQ(gap.split_ms, late);
    }
}

TEST_F(GhostGapTest, HardlyChangesAcrossTheRoad) {
    int looked_at = 0;
    int far = 0; // where the ghost threw the car round a bend of two cells
    for (std::size_t k = 300; k + 300 < lap().size(); k += 47) {
        CarState const& car = lap()[k];
        for (double const aside : {-1.5, 1.5}) {
            double const x = car.x - std::sin(car.travel_dir) * aside;
            double const y = car.y + std::cos(car.travel_dir) * aside;
            if (!position_is_passable(race->track, x, y)) continue;
            Cell const cell = cell_at(x, y);
            std::int32_t const steps =
                race->track.start_distance[race->track.index(cell.column, cell.row)];
            double const at = ghost_time_at(gap.index, x, y, steps);
            if (std::abs(at - static_cast<double>(k)) > 12.0) ++far;
            ++looked_at;
        }
    }
    EXPECT_GT(looked_at, 50);
    EXPECT_LE(far, 2);
}

TEST_F(GhostGapTest, GrowsSecondForSecondWhileTheCarStandsAndIsCalm) {
    start_gap(gap);
    drive(0.0, 0, 2000);
    double lap_ms = 2000.0;
    std::set<double> shown;
    for (int frame = 0; frame < 625; ++frame) { // ten seconds
        update_gap(gap, race->track, lap()[1984], lap_ms += 16.0, tick += 16);
        if (gap.gap_tick == tick) {
            EXPECT_NEAR(gap.gap_ms, lap_ms - 1984.0, 3.0);
        }
        shown.insert(gap.gap_ms);
    }
    EXPECT_GT(gap.gap_ms, 9700.0);
    EXPECT_LE(shown.size(), 51U) << "five times a second";
}

TEST_F(GhostGapTest, BelievesNoJumpOverTheLine) {
    start_gap(gap);
    std::size_t const end = lap().size() - 200; // just before the line, the lap's other end
    update_gap(gap, race->track, lap()[end], 10.0, 1);
    EXPECT_NEAR(gap.gap_ms, 10.0, 1.0);
    update_gap(gap, race->track, lap()[200], 300.0, 300);
    EXPECT_NEAR(gap.gap_ms, 100.0, 2.0);
    set_ghost(gap, race->track, {}, 10);
    EXPECT_TRUE(gap.index.places.empty());
    update_gap(gap, race->track, lap()[200], 300.0, 600);
    EXPECT_FALSE(gap.shows);
}
