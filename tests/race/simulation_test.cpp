#include "audio/audio.h"
#include "race/clocks.h"
#include "race/simulation.h"
#include "support/said.h"
#include "support/tracks.h"

#include <gtest/gtest.h>

namespace {

struct Race : testing::Test {
    // What the race asks of the game around it, in order.
    std::string restart(bool clear, bool keep_music) {
        std::string calls;
        sim.restart(
            clear, keep_music, track, audio, 0.3F, [&] { calls += "apply "; },
            [&] {
                calls += "pick ";
                return "music/none.mp3";
            },
            [&] { calls += "clear "; }, true, true, 5);
        return calls;
    }

    Track track = make_hall(60, 60);
    Simulation sim;
    Audio audio;
};

TEST_F(Race, RestartPutsTheRaceBack) {
    sim.postTick(1); // nothing is there yet
    sim.beginGameOver(77);
    sim.winner = 2;
    sim.first_finish_tick = 5;
    sim.sim_time_ms = 1230;
    audio.music_volume = 0.5F;
    EXPECT_NE(errors_of([&] { EXPECT_EQ(restart(true, false), "clear apply pick "); }), "");
    EXPECT_FALSE(sim.game_over || sim.countdown.active);
    EXPECT_EQ(sim.winner, 0);
    EXPECT_EQ(sim.first_finish_tick, 0U);
    EXPECT_EQ(sim.sim_time_ms, 1230U); // never goes back
    EXPECT_EQ(sim.laps, 5);
    EXPECT_EQ(audio.music_volume, 0.3F);
    EXPECT_TRUE(audio.music_playing && sim.music_on && audio.car_sound_active);

    audio.music_playing = sim.music_on = false;
    EXPECT_EQ(restart(false, true), "");
    EXPECT_FALSE(audio.music_playing || sim.music_on);
}

TEST_F(Race, GameOverStopsWhoStillRacesOnce) {
    sim.sim_time_ms = 5000;
    sim.p1.view.finished_ms = 40;
    sim.p1.finish_ms = 4000.0;
    sim.p2.view.skid_points.emplace_back();
    sim.beginGameOver(77);
    sim.sim_time_ms = 9000;
    sim.beginGameOver(99);
    EXPECT_EQ(sim.game_over_tick, 77U);
    EXPECT_EQ(sim.p1.finish_ms, 4000.0);
    EXPECT_EQ(sim.p2.finish_ms, 5000.0);
    EXPECT_EQ(sim.p2.view.finished_ms, 77U);
    EXPECT_TRUE(sim.p2.view.skid_points.empty());
}

TEST_F(Race, ClocksStandBeforeTheStartAndAfterTheFinish) {
    Player& red = sim.p1;
    red.lap_start_ms = 3000.4;
    red.race_start_ms = 1000.0;
    EXPECT_EQ(lap_clock(red, false, 4000.0), 1000U);
    EXPECT_EQ(total_clock(red, false, 4000.0), 3000U);
    EXPECT_EQ(total_clock(red, true, 4000.0), 0U);
    red.view.finished_ms = 1;
    red.finish_ms = 3500.0;
    EXPECT_EQ(lap_clock(red, false, 4000.0), 500U);
    EXPECT_EQ(total_clock(red, false, 4000.0), 2500U);
    red.waiting_for_line = true;
    EXPECT_EQ(lap_clock(red, false, 4000.0), 0U);
}

TEST_F(Race, GridAndRunUpFollowTheScaleAndTheRoad) {
    PIXELS_PER_CELL = 4;
    Track const road = track_from_rows(
        {"g.........!.......", "g.........!*......", "g.........!.......", "g.........!......."});
    CarState left;
    CarState right;
    place_car_at_start(left, road, -1);
    place_car_at_start(right, road, 1);
    EXPECT_DOUBLE_EQ(left.x, 11.5);
    EXPECT_DOUBLE_EQ(left.y, 1.5 - 2.0);
    EXPECT_DOUBLE_EQ(right.y, 1.5 + 2.0);
    left.y = 0.5;
    place_cars_flying_start(left, right, road);
    EXPECT_NEAR(left.x, 1.4, 0.1001); // 0.4 short of where the grass begins, in steps of 0.1
    EXPECT_EQ(left.x, right.x);
    left.x = right.x = 1.3;
    place_cars_flying_start(left, right, road);
    EXPECT_EQ(left.x, 1.3); // no room for a run-up
}

TEST_F(Race, ACarHeldUnderGasIsFreedAfterTwelveSteps) {
    sim.track = &track;
    Player& red = sim.p1;
    red.car.x = red.prev_car.x = HALL_RIM + 59.99;
    red.car.y = red.prev_car.y = HALL_RIM + 30.5;
    red.input.gas = true;
    for (int i = 0; i < 11; ++i) sim.postTick(1);
    EXPECT_EQ(red.car.x, red.prev_car.x);
    sim.postTick(1);
    EXPECT_NEAR(red.car.x, red.prev_car.x - 0.06, 1e-12);
    red.prev_car = red.car;
    sim.postTick(1); // still held
    EXPECT_NEAR(red.car.x, red.prev_car.x - 0.06, 1e-12);
    sim.postTick(1); // it has got away by now
    EXPECT_EQ(red.stuck_ticks, 0);
}

} // namespace
