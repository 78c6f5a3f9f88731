#include "audio/audio.h"
#include "race/race_report.h"
#include "race/race_rules.h"
#include "support/said.h"

#include <gtest/gtest.h>

namespace {

struct RaceRules : testing::Test {
    RaceRules() {
        sim.p1.id = 1;
        sim.p2.id = 2;
        sim.laps = 3;
    }

    // How many beeps of the countdown are told at this moment.
    std::size_t beeps_at(std::uint32_t now) {
        events.clear();
        run_countdown(sim, now, events);
        return events.size();
    }

    Simulation sim;
    RaceEvents events;
};

TEST_F(RaceRules, CountdownBeepsFourTimesAndGoStartsClocksAndMusic) {
    start_countdown(sim.countdown, 1000);
    EXPECT_EQ(beeps_at(1000), 1U);
    EXPECT_EQ(beeps_at(1999), 0U);
    EXPECT_EQ(beeps_at(2000), 1U);
    sim.p1.trace.emplace_back();
    sim.p2.input.gas = true;
    sim.sim_time_ms = 4000;
    hold_clocks(sim);
    EXPECT_FALSE(sim.p2.input.gas);
    EXPECT_EQ(sim.p1.lap_start_ms, 4000.0);
    EXPECT_EQ(beeps_at(3000), 1U);
    EXPECT_EQ(beeps_at(3999), 0U);
    sim.sim_time_ms = 4010;
    EXPECT_EQ(beeps_at(4000), 1U);
    EXPECT_EQ(events.back().number, GO_STEP);
    EXPECT_FALSE(sim.countdown.active);
    EXPECT_EQ(sim.p1.race_start_ms, 4010.0);
    EXPECT_TRUE(sim.p1.trace.empty());
    EXPECT_EQ(beeps_at(9000), 0U);
    sim.p2.input.gas = true;
    hold_clocks(sim);
    EXPECT_TRUE(sim.p2.input.gas);
    EXPECT_FALSE(start_music_after_go(sim, 4299));
    EXPECT_TRUE(start_music_after_go(sim, 4300));
    EXPECT_TRUE(sim.music_on);
    EXPECT_FALSE(start_music_after_go(sim, 4301));

    start_countdown(sim.countdown, 10000);
    EXPECT_EQ(beeps_at(17000), 4U); // after a stall, all at once
}

TEST_F(RaceRules, WhoComesSecondHasTwentySeconds) {
    sim.first_finish_tick = sim.p1.view.finished_ms = 5000;
    sim.p2.view.skid_points.emplace_back();
    stop_who_is_out_of_time(sim, 24999, events);
    EXPECT_TRUE(events.empty());
    sim.sim_time_ms = 1230;
    stop_who_is_out_of_time(sim, 25000, events);
    stop_who_is_out_of_time(sim, 25010, events);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(sim.p2.view.finished_ms, 25000U);
    EXPECT_EQ(sim.p2.finish_ms, 1230.0);
    EXPECT_TRUE(sim.p2.view.skid_points.empty());
    EXPECT_EQ(sim.p1.view.finished_ms, 5000U);

    Audio audio;
    std::string const path;
    ReportContext report{sim, audio, path, 0, true, {}};
    EXPECT_EQ(output_of([&] { report_events(report, events); }), "P2 out of time — race over\n");
}

TEST_F(RaceRules, ARaceIsOverASecondAfterBothHaveFinished) {
    PlayerView& red = sim.p1.view;
    EXPECT_EQ(presence(red, 100), 1.0F);
    red.finished_ms = 5000;
    EXPECT_EQ(presence(red, 5250), 0.75F);
    EXPECT_EQ(presence(red, 6000), 0.0F);
    EXPECT_FALSE(race_is_over(sim, 9000));
    sim.p2.view.finished_ms = 8000;
    EXPECT_FALSE(race_is_over(sim, 8999));
    EXPECT_TRUE(race_is_over(sim, 9000));
    sim.laps = 0;
    EXPECT_FALSE(race_is_over(sim, 9000));
    sim.laps = 3;
    sim.game_over = true;
    EXPECT_FALSE(race_is_over(sim, 9000));

    sim.p1.input.gas = sim.p2.input.gas = true;
    red.car_alpha = 0;
    hold_clocks(sim);
    EXPECT_FALSE(sim.p1.input.gas);
    EXPECT_TRUE(sim.p2.input.gas);
}

} // namespace
