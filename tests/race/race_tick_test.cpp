#include "audio/audio.h"
#include "race/race_report.h"
#include "race/race_tick.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "support/said.h"
#include "support/tracks.h"
#include "world/car_physics.h"
#include "world/wall_contact.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <numbers>

namespace {

// A straight road along x with the goal line across it at column 50 and the start cell behind it:
// forward is towards larger x.
Track make_straight() {
    std::vector<std::string> rows(20, std::string(100, '.'));
    for (std::string& row : rows) {
        row[0] = 'b';
        row[50] = '!';
    }
    rows[10][53] = '*';
    rows.insert(rows.begin(), std::string(100, 'b'));
    return track_from_rows(rows);
}

struct RaceTick : testing::Test {
    RaceTick() {
        sim.track = &track;
        line_up_players(sim, track);
        sim.p1.id = 1;
        sim.p2.id = 2;
    }

    bool tick(Player& player, int i, bool arcade = false) {
        RaceContext race{sim, track, events, NOW, arcade, 10};
        return race_tick(race, player, i);
    }

    void report(bool arcade = false, int slot = 0) {
        ReportContext context{sim, audio, path, slot, !arcade, {}};
        report_events(context, events);
        events.clear();
    }

    // Carries the car to `x` in one tick and lets the rules see it.
    std::string pass(Player& player, double x, bool arcade = false, int slot = 0, int i = 0) {
        player.car.x = x;
        player.car.speed = player.car.throttle = 0.0;
        return output_of([&] {
            EXPECT_FALSE(tick(player, i, arcade));
            report(arcade, slot);
        });
    }

    // One clean lap that ends `ms` after the last one, in a track of one dimension.
    std::string lap(Player& player, unsigned ms, bool arcade = false, int slot = 0) {
        player.car.x = player.goal_prev_x = 40.0; // round the course, so to say
        sim.sim_time_ms += ms;
        return pass(player, 52.0, arcade, slot, 9);
    }

    Track track = make_straight();
    static constexpr std::uint32_t NOW = 5;
    Simulation sim;
    Audio audio;
    RaceEvents events;
    std::string path = "tracks/3_coast.trk";
};

TEST_F(RaceTick, GoalLineKnowsItsEndsAndItsDirection) {
    Player& red = sim.p1;
    auto const cross = [&](double x, double y) {
        red.car.x = x;
        red.car.y = y;
        return check_goal_crossing(red, track);
    };
    cross(49.0, 10.0);
    EXPECT_EQ(cross(50.4, 10.0), 0);
    EXPECT_EQ(cross(50.6, 10.0), 1);
    EXPECT_EQ(cross(50.4, 10.0), 2);
    cross(49.0, 0.5); // above the line's upper end, at 1.5
    EXPECT_EQ(cross(52.0, 0.5), 0);
    EXPECT_EQ(cross(49.0, 4.0), 2); // the way back cuts it
    red.goal_prev_valid = false;
    EXPECT_EQ(cross(52.0, 10.0), 0);
    EXPECT_TRUE(red.goal_prev_valid);
}

TEST_F(RaceTick, FlyingStartBeginsTheClockAtTheLine) {
    sim.flying_start = true;
    line_up_players(sim, track);
    Player& red = sim.p1;
    EXPECT_NEAR(red.car.x, 1.45, 0.051); // 0.4 cells and a bit before the barrier
    EXPECT_EQ(red.car.heading, 0.0);
    EXPECT_NE(red.car.y, sim.p2.car.y);
    sim.sim_time_ms = 5000;
    EXPECT_EQ(pass(red, 51.0, false, 0, 2), "P1 flying start: clock running\n");
    EXPECT_EQ(red.lap_start_ms, 5003.0);
    EXPECT_EQ(red.race_start_ms, 5003.0);
    EXPECT_EQ(red.view.laps_done, 0);
    EXPECT_EQ(red.trace.size(), 1U);
}

TEST_F(RaceTick, BackwardsCostsTheLapOnceHoweverOften) {
    Player& blue = sim.p2;
    EXPECT_EQ(pass(blue, 49.0), "P2 crossed goal line backwards\n");
    blue.goal_prev_x = 52.0;
    EXPECT_EQ(pass(blue, 48.0), "");
    EXPECT_EQ(pass(blue, 52.0), "P2 back across goal line (no lap counted)\n");
    EXPECT_EQ(blue.view.laps_done, 0);
    EXPECT_EQ(lap(blue, 61004 - 10), "P2 lap 1: 61.004 s  (best)\n");
}

TEST_F(RaceTick, LapsAreTimedComparedAndAnnounced) {
    Player& red = sim.p1;
    EXPECT_EQ(lap(red, 9990), "P1 lap 1: 10.000 s  (best)\n");
    EXPECT_EQ(audio.beep_hz, 1320.0F);
    EXPECT_TRUE(red.best_trace.empty()); // nothing had been recorded before the line
    EXPECT_EQ(red.trace.size(), 1U);
    EXPECT_EQ(lap(red, 10000), "P1 lap 2: 10.000 s\n"); // a lap that equals the best is none
    EXPECT_EQ(audio.beep_hz, 880.0F);
    EXPECT_EQ(audio.beep_requests.count(), 2U);
    EXPECT_EQ(lap(red, 9000), "P1 lap 3: 9.000 s  (best)\n");
    EXPECT_EQ(red.view.best_lap_ms, 9000U);
    EXPECT_EQ(red.view.lap_overlay_record, 0);
    EXPECT_EQ(red.best_trace.size(), 1U);
    EXPECT_EQ(lap(red, 8000, true), "P1 lap 4: 8.000 s  (best)\n"); // arcade records nothing
    EXPECT_EQ(red.trace.size(), 0U);
    EXPECT_EQ(sim.first_finish_tick, 0U); // no race of 0 laps ends
}

TEST_F(RaceTick, BestLapsGoToTheTableWithTheirGhost) {
    Player& red = sim.p1;
    red.name = "Ada L";
    lap(red, 20000, false, 3);
    std::filesystem::remove(pref_path("Ada_L.coast.trace"));
    EXPECT_EQ(lap(red, 10000, false, 3), "P1 ghost saved: Ada_L.coast.trace (1 frames)\n"
                                         "P1 lap 2: 10.000 s  (best)\n");
    EXPECT_EQ(red.view.lap_overlay_record, 2);
    EXPECT_EQ(best_lap_trace("Ada L", 3), "Ada_L.coast.trace");
    std::vector<CarState> frames;
    unsigned ticks = 0;
    EXPECT_TRUE(load_ghost_trace(pref_path("Ada_L.coast.trace"), frames, &ticks));
    EXPECT_EQ(ticks, 10U);
    EXPECT_EQ(lap(red, 9000, true, 3), "P1 lap 3: 9.000 s  (best)\n");
    EXPECT_EQ(lap(red, 8000, false, 0), "P1 lap 4: 8.000 s  (best)\n");
    BestLapTable table;
    ASSERT_TRUE(load_best_lap_table(table));
    EXPECT_EQ(table["Ada L"][3].seconds, 10.0);

    std::filesystem::remove(pref_path("best_lap_times.txt"));
    std::filesystem::create_directory(pref_path("best_lap_times.txt")); // nobody can read it
    EXPECT_EQ(lap(red, 7000, false, 3), "P1 lap 5: 7.000 s  (best)\n") << "and the ghost stays";
}

TEST_F(RaceTick, TheFirstToFinishWinsAndTheOtherFinishesAtItsNextLap) {
    sim.laps = 3;
    lap(sim.p1, 10000);
    EXPECT_EQ(sim.p1.view.last_lap_flash_ms, 0U);
    lap(sim.p1, 10000);
    EXPECT_NE(sim.p1.view.last_lap_flash_ms, 0U);
    sim.p1.view.skid_points.emplace_back();
    audio.music_playing = sim.music_on = true;
    EXPECT_EQ(lap(sim.p1, 10010), "P1 lap 3: 10.010 s\nP1 finished the race\n");
    EXPECT_EQ(sim.winner, 1);
    EXPECT_EQ(sim.p1.finish_ms, 30020.0);
    EXPECT_EQ(sim.p1.lap_start_ms, 20010.0); // its clock holds the last lap
    EXPECT_TRUE(sim.p1.view.skid_points.empty());
    EXPECT_TRUE(sim.finish_seq.active);
    EXPECT_FALSE(audio.music_playing || sim.music_on);
    EXPECT_EQ(lap(sim.p1, 1000), ""); // out of the race
    EXPECT_EQ(sim.p1.view.laps_done, 3);

    sim.p2.view.laps_done = 0;
    EXPECT_EQ(lap(sim.p2, 0), "P2 lap 1: 31.020 s  (best)\nP2 finished the race\n");
    EXPECT_EQ(sim.winner, 1);
    EXPECT_NE(sim.p2.view.finished_ms, 0U);
}

TEST_F(RaceTick, AWallTickFillsTheStepsRecording) {
    Player& red = sim.p1;
    red.car.x = 20.0;
    red.car.y = 1.001; // just below the barrier
    red.car.heading = red.car.travel_dir = -std::numbers::pi / 2.0;
    red.car.speed = red.car.throttle = 0.3;
    red.goal_prev_x = 60.0;
    EXPECT_TRUE(tick(red, 3));
    EXPECT_EQ(red.trace.size(), 7U);
    EXPECT_EQ(red.trace.back().y, red.car.y);
    EXPECT_FALSE(red.car.in_wall);
    EXPECT_EQ(red.goal_prev_x, 60.0); // the goal line is not looked at
    report();
    EXPECT_EQ(audio.car_feed[0].wall_hit_count.count(), 1U);
    EXPECT_FLOAT_EQ(audio.car_feed[0].wall_hit_volume, 0.3F);

    sim.countdown.active = true;
    EXPECT_FALSE(tick(red, 0));
    EXPECT_EQ(red.trace.size(), 7U);
}

TEST_F(RaceTick, ATapOfTheBrakeInACornerSlidesFor200Ticks) {
    Player& red = sim.p1;
    int slid = 0;
    for (int i = 0; i < 400; ++i) {
        red.car = sim.p2.car;
        red.car.throttle = 0.3;
        red.input = {.brake = i == 0, .left = true};
        tick(red, 0);
        if (red.car.throttle < 0.3 - 0.0002) ++slid; // only the brake takes so much
    }
    EXPECT_EQ(slid, 200);
}

TEST_F(RaceTick, StepsKeepTimeAndRunBothCars) {
    sim.p1.input.gas = sim.p2.input.gas = true;
    RaceContext race{sim, track, events, NOW, false, 10};
    race_step(race);
    EXPECT_EQ(sim.sim_time_ms, 10U);
    EXPECT_EQ(sim.p1.trace.size(), 10U);
    EXPECT_EQ(sim.p2.trace.size(), 10U);
    EXPECT_GT(sim.p1.car.x, 53.5);
    SIM_SPEED = 2.9;
    EXPECT_EQ(ticks_per_step(), 2);
    SIM_SPEED = 0.5;
    EXPECT_EQ(ticks_per_step(), 1);
}

} // namespace
