#include "base/texts.h"
#include "race/race_notices.h"
#include "render/colors.h"
#include "render/scene.h"
#include "support/canvas.h"

#include <algorithm>
#include <tuple>

namespace {

struct Notices : testing::Test {
    Notices() {
        sim.p1.id = 1;
        sim.p2.id = 2;
        sim.laps = 3;
        sim.p1.view.viewport = {0, 0, 640, 720};
        sim.p2.view.viewport = {640, 0, 640, 720};
        start_notices(notices, 1000);
    }

    // How many pixels of red's view and of blue's say something.
    std::pair<int, int> ink(std::uint32_t now) {
        canvas.clear(GREEN);
        place_warnings(notices, mono.fonts, sim, sim.p1.car, sim.p2.car, now);
        NoticePicture const picture{canvas.renderer(), mono.fonts, notices, sim, now};
        draw_view_notices(picture, sim.p1, true);
        draw_view_notices(picture, sim.p2, true);
        return {canvas.count_other(sim.p1.view.viewport, GREEN),
                canvas.count_other(sim.p2.view.viewport, GREEN)};
    }
    void tell(RaceEvent const& event, std::uint32_t now) {
        note_events(notices, sim, {event}, now);
    }

    // The ink of the heads of the result's columns.
    int count_heads(ResultTable const& table) {
        canvas.clear(BLACK);
        SDL_Rect const heads{0, 360 + 132, 1280, 18};
        render_result(canvas.renderer(), 1280, 720, mono.fonts, table, 1.0F);
        return canvas.count_other(heads, {3, 4, 10, 255}, 12);
    }

    static constexpr SDL_Color GREEN{60, 120, 50, 255};
    Canvas canvas{1280, 720};
    MonoFonts mono;
    Simulation sim;
    RaceNotices notices;
};

using Ink = std::pair<int, int>;

} // namespace

TEST_F(Notices, SayNothingWhileThereIsNothingToSay) {
    sim.countdown.active = true;
    EXPECT_EQ(ink(1000), Ink(0, 0));
    sim.p1.name = "Pixie";
    EXPECT_GT(ink(1000).first, 500) << "whose view this is";
    EXPECT_EQ(ink(1000).second, 0);
    EXPECT_EQ(ink(4000), Ink(0, 0));
}

TEST_F(Notices, CountWithTheBeeps) {
    int before = 0;
    for (int step = 0; step < 4; ++step) {
        std::uint32_t const now = 1000U + 1000U * static_cast<std::uint32_t>(step);
        tell({.kind = RaceEventKind::CountdownBeep, .number = step}, now);
        Ink const both = ink(now);
        EXPECT_GT(both.first, 1000);
        EXPECT_EQ(both.first, both.second);
        EXPECT_NE(both.first, before) << "another number";
        before = both.first;
        if (step == 3) break;
        EXPECT_EQ(ink(now + 5000).first, before) << "until the next beep, late or not";
    }
    EXPECT_GT(ink(4880).first, 0);
    EXPECT_EQ(ink(4900), Ink(0, 0));
    start_notices(notices, 9000);
    EXPECT_EQ(ink(9000), Ink(0, 0)) << "a new start has not beeped yet";
}

TEST_F(Notices, CountWhereTheyHideNoCar) {
    Track const tall = road(100, 150);
    sim.track = &tall;
    sim.p1.name = sim.p2.name = "Pixie";
    for (double const y : {8.0, 20.0, 75.0, 142.0}) { // the camera stops at the edges
        sim.p1.car = car_at(50.0, y - 0.5);
        sim.p2.car = car_at(50.0, y + 0.5);
        note_starts(notices, sim);
        tell({.kind = RaceEventKind::CountdownBeep, .number = 3}, 1000);
        EXPECT_GT(ink(1000).first, 2000);
        int const at = static_cast<int>(y < 20.5 ? y * 18 : y > 130 ? 720 - (150 - y) * 18 : 360);
        EXPECT_EQ(canvas.count_other({300, at - 20, 40, 40}, GREEN), 0) << "start at " << y;
        EXPECT_EQ(canvas.count_other({940, at - 20, 40, 40}, GREEN), 0) << "start at " << y;
    }
}

TEST_F(Notices, WarnWhereTheyHideNoCarAndStayThere) {
    Track const tall = road(100, 150);
    sim.track = &tall;
    sim.p2.view.cam_x = 50.0;
    for (double const y : {8.0, 75.0, 138.8, 142.0, 146.0}) { // the camera stops at the edges
        sim.p2.wrong_way = false;
        sim.first_finish_tick = sim.p1.view.finished_ms = 0;
        EXPECT_EQ(ink(4000), Ink(0, 0));
        sim.p1.car = car_at(50.0, y - 0.5);
        sim.p2.car = car_at(50.0, y + 0.5);
        sim.p2.view.cam_y = y;
        int const at = static_cast<int>(y < 20.0 ? y * 18 : y > 130 ? 720 - (150 - y) * 18 : 360);
        SDL_Rect const cars{940, at - 20, 40, 40};
        sim.first_finish_tick = sim.p1.view.finished_ms = 6000;
        int const time_left = ink(6001).second;
        EXPECT_GT(time_left, 500);
        EXPECT_EQ(canvas.count_other(cars, GREEN), 0) << "time left at " << y;
        sim.p2.wrong_way = true;
        int const both = ink(6001).second;
        EXPECT_GT(both, time_left + 500);
        EXPECT_EQ(canvas.count_other(cars, GREEN), 0) << "wrong way at " << y;
        auto const words = canvas.pixels(sim.p2.view.viewport);
        // Neither a place that falls free moves them nor a car that comes their way.
        sim.p2.view.cam_y = 60.0;
        sim.p2.car.y = y > 100.0 ? 60.0 : 68.8;
        ink(6002);
        EXPECT_EQ(canvas.pixels(sim.p2.view.viewport), words) << "moved from " << y;
    }
}

TEST_F(Notices, NamesFadeWithoutTurningBlack) {
    sim.p1.name = "Pixie";
    ink(1000);
    auto const full = canvas.pixels(sim.p1.view.viewport);
    constexpr SDL_Color RED{255, 125, 115, 255};
    auto const letter = std::find(full.begin(), full.end(), RED) - full.begin();
    ASSERT_LT(static_cast<std::size_t>(letter), full.size());
    for (std::uint32_t const left : {200U, 150U, 100U, 50U}) {
        ink(4000 - left);
        auto const pixel = canvas.pixels(sim.p1.view.viewport).at(static_cast<std::size_t>(letter));
        EXPECT_GT(pixel.g, 70) << left << " ms before it is gone";
    }
}

TEST_F(Notices, WarnWhomItConcerns) {
    EXPECT_EQ(ink(5000), Ink(0, 0));
    sim.p2.wrong_way = true;
    EXPECT_EQ(ink(5000).first, 0);
    EXPECT_GT(ink(5000).second, 1000);
    sim.p2.wrong_way = false;

    sim.first_finish_tick = sim.p1.view.finished_ms = 6000;
    int const twenty = ink(6001).second;
    EXPECT_GT(twenty, 500);
    EXPECT_EQ(ink(6001).first, 0);
    EXPECT_EQ(ink(6999).second, twenty);
    EXPECT_NE(ink(7001).second, twenty) << "a second less";
    sim.p2.view.finished_ms = 26000;
    EXPECT_EQ(ink(26000), Ink(0, 0));
    tell({.kind = RaceEventKind::OutOfTime, .player = 2}, 26000);
    EXPECT_GT(ink(26000).second, 1000);
    EXPECT_EQ(ink(26000).first, 0);
    sim.game_over = true;
    EXPECT_EQ(ink(26000), Ink(0, 0)) << "the table says it now";
}

TEST_F(Notices, ResultTellsTimesLapsAndRecords) {
    using Kind = RaceEventKind;
    for (auto const& [blue_laps, blue_end, gap] : {std::tuple{3, Kind::Finished, "+1.25"},
                                                   {2, Kind::Finished, texts::LAP_BEHIND},
                                                   {1, Kind::Finished, "2 laps"},
                                                   {1, Kind::OutOfTime, texts::TOO_LATE},
                                                   {1, Kind::WrongWay, texts::STOPPED}}) {
        start_notices(notices, 1000);
        sim.p1.name = "Zoe";
        sim.winner = 1;
        sim.p1.view.laps_done = 3;
        sim.p2.view.laps_done = blue_laps;
        sim.p1.view.finished_ms = sim.p2.view.finished_ms = 9000;
        sim.p1.finish_ms = 91500.0;
        sim.p2.finish_ms = 92750.0;
        for (auto const& [ms, record] : {std::pair{30500U, 0}, {30000U, 2}, {31000U, 0}}) {
            tell({.kind = Kind::Lap, .player = 1, .time_ms = ms, .record = record}, 5000);
        }
        tell({.kind = Kind::Finished, .player = 1, .is_first = true}, 5000);
        tell({.kind = blue_end, .player = 2}, 6000);
        ResultTable const table = result_table(notices, sim);
        EXPECT_EQ(table.title, "Zoe wins");
        EXPECT_EQ(table.rows[0].total, "1:31.50");
        EXPECT_EQ(table.rows[0].best_lap, "30.00");
        EXPECT_EQ(table.rows[0].note, texts::RECORDS[2]);
        EXPECT_EQ(table.rows[0].gap, "");
        EXPECT_EQ(table.rows[1].name, "Blue");
        EXPECT_EQ(table.rows[1].best_lap, "");
        EXPECT_EQ(table.rows[1].note, "");
        EXPECT_EQ(table.rows[1].gap, gap);
    }
    canvas.clear(BLACK);
    render_result(canvas.renderer(), 1280, 720, mono.fonts, result_table(notices, sim), 0.0F);
    EXPECT_EQ(canvas.count_other({0, 0, 1280, 720}, BLACK), 0);
    render_result(canvas.renderer(), 1280, 720, mono.fonts, result_table(notices, sim), 1.0F);
    EXPECT_EQ(canvas.count_other({0, 0, 1280, 410}, BLACK), 0) << "below the words of game over";
    EXPECT_GT(canvas.count_other({0, 410, 1280, 310}, BLACK), 3000);
    ResultTable table = result_table(notices, sim);
    int const stopped = count_heads(table);
    table.rows[1].finished = true;
    EXPECT_GT(count_heads(table), stopped + 20) << "only then is there a gap to head";
}
