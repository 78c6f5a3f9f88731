#include "render/colors.h"
#include "render/scene.h"
#include "render/skid_trail.h"
#include "support/canvas.h"

using SkidTrail = RaceView;

namespace {

CarState skidding_at(double x, double y) {
    CarState car;
    car.x = x;
    car.y = y;
    car.skidding = true;
    return car;
}

} // namespace

TEST_F(SkidTrail, LaysEvenlySpacedPoints) {
    PlayerView view;
    CarState car = skidding_at(10, 5);
    car.heading = 0.5;
    update_skid_trail(view, car, 1000);
    ASSERT_EQ(view.skid_points.size(), 1U);
    car.x = 10.1;
    update_skid_trail(view, car, 1010);
    EXPECT_EQ(view.skid_points.size(), 1U);
    car.x = 10.5; // 0.5 in all: at 0.15, 0.30, 0.45
    car.heading = 0.6;
    update_skid_trail(view, car, 1020);
    ASSERT_EQ(view.skid_points.size(), 4U);
    EXPECT_NEAR(view.skid_points[1].x, 10.15, 1e-9);
    EXPECT_NEAR(view.skid_points[3].x, 10.45, 1e-9);
    EXPECT_EQ(view.skid_points[3].heading, 0.6);
    EXPECT_EQ(view.skid_points[1].time_ms, 1020U);
    EXPECT_NEAR(view.skid_carry, 0.05, 1e-9);

    car.x = 13.5; // a step at top speed
    update_skid_trail(view, car, 1030);
    EXPECT_EQ(view.skid_points.size(), 24U);

    car.skidding = false;
    update_skid_trail(view, car, 1040);
    EXPECT_FALSE(view.skid_active);
    car.skidding = true; // a new trail begins at once
    update_skid_trail(view, car, 1050);
    EXPECT_EQ(view.skid_points.size(), 25U);
}

TEST_F(SkidTrail, StandingCarAddsAPointEveryThirtyMilliseconds) {
    PlayerView view;
    for (unsigned now = 0; now <= 90; now += 10) update_skid_trail(view, skidding_at(3, 3), now);
    EXPECT_EQ(view.skid_points.size(), 4U);
}

TEST_F(SkidTrail, OldPointsGoByAgeAndByNumber) {
    PlayerView view;
    unsigned const start = 0xFFFFFF00U; // the tick counter may wrap
    update_skid_trail(view, skidding_at(0, 0), start);
    CarState gone;
    update_skid_trail(view, gone, start + 4000);
    EXPECT_EQ(view.skid_points.size(), 1U);
    update_skid_trail(view, gone, start + 4001);
    EXPECT_TRUE(view.skid_points.empty());

    CarState car = skidding_at(0, 0);
    for (int step = 0; step < 300; ++step, car.x += 3) update_skid_trail(view, car, 10);
    EXPECT_EQ(view.skid_points.size(), 4096U);
    EXPECT_GT(view.skid_points.front().x, 0.0);
}

TEST_F(SkidTrail, DrawsTwoFadingMarksBesideTheCentreLine) {
    Canvas canvas(60, 60);
    PlayerView view;
    view.skid_points = {{1, 2, 0, 1000}, {1.5, 2, 0, 1000}, {2, 2, 0, 1000}};
    auto const middle_of_mark = [&](unsigned now) {
        canvas.clear(WHITE);
        draw_skids(canvas.renderer(), view, 0, 0, now, {0, 0, 60, 60});
        return canvas.at(22, 41); // the right wheel: 36 + 5.35, 2.6 wide
    };
    EXPECT_NEAR(middle_of_mark(1000).r, 255 - 230 * 230 / 255, 2);
    EXPECT_EQ(canvas.at(22, 30).r, canvas.at(22, 41).r) << "both wheels alike";
    EXPECT_EQ(canvas.at(22, 36).r, 255) << "nothing between them";
    EXPECT_NEAR(middle_of_mark(3000).r, 255 - 230 * 115 / 255, 2);
    EXPECT_GT(middle_of_mark(5000).r, 253);
    EXPECT_EQ(SDL_RenderIsClipEnabled(canvas.renderer()), SDL_FALSE);
}

TEST_F(SkidTrail, JoinsOnlyNeighboursAndStaysInsideTheClip) {
    Canvas canvas(120, 60);
    PlayerView view;
    // 0.5 apart, then 1 apart, then 0.5 again: a gap from pixel 27 to pixel 45.
    view.skid_points = {{1, 2, 0, 0}, {1.5, 2, 0, 0}, {2.5, 2, 0, 0}, {3, 2, 0, 0}};
    auto const ink = [&](SDL_Rect const& area) { return canvas.count_other(area, WHITE); };
    canvas.clear(WHITE);
    draw_skids(canvas.renderer(), view, 0, 0, 0, {0, 0, 120, 60});
    EXPECT_GT(ink({18, 0, 9, 60}), 20);
    EXPECT_EQ(ink({28, 0, 16, 60}), 0);
    EXPECT_GT(ink({45, 0, 9, 60}), 20);

    canvas.clear(WHITE); // scrolled: map pixel 20 at the clip's left edge
    draw_skids(canvas.renderer(), view, 20, 0, 0, {60, 0, 60, 60});
    EXPECT_EQ(ink({0, 0, 60, 60}), 0);
    EXPECT_GT(ink({60, 0, 8, 60}), 20) << "a mark that crosses the edge still shows";
    EXPECT_GT(ink({85, 0, 9, 60}), 20);

    canvas.clear(WHITE);
    view.skid_points.resize(1);
    draw_skids(canvas.renderer(), view, 0, 0, 0, {0, 0, 120, 60});
    EXPECT_EQ(ink({0, 0, 120, 60}), 0);
}
