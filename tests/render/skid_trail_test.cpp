#include "render/colors.h"
#include "render/scene.h"
#include "render/skid_trail.h"
#include "support/canvas.h"

namespace {

CarState skidding_at(double x) {
    return {.x = x, .y = 5, .skidding = true};
}

} // namespace

TEST(SkidTrail, LaysEvenlySpacedPoints) {
    PlayerView view;
    auto const points_after = [&](CarState const& car, unsigned now) {
        update_skid_trail(view, car, now);
        return view.skid_points.size();
    };
    ASSERT_EQ(points_after(skidding_at(10), 1000), 1U);
    EXPECT_EQ(points_after(skidding_at(10.1), 1010), 1U);
    CarState car = skidding_at(10.5); // 0.5 in all: at 0.15, 0.30, 0.45
    car.heading = 0.6;
    ASSERT_EQ(points_after(car, 1020), 4U);
    EXPECT_NEAR(view.skid_points[1].x, 10.15, 1e-9);
    EXPECT_NEAR(view.skid_points[3].x, 10.45, 1e-9);
    EXPECT_EQ(view.skid_points[3].heading, 0.6);
    EXPECT_EQ(view.skid_points[1].time_ms, 1020U);
    EXPECT_EQ(points_after(skidding_at(13.5), 1030), 24U); // a step at top speed
    EXPECT_EQ(points_after(car_at(13.5, 5), 1040), 24U);
    EXPECT_EQ(points_after(skidding_at(13.5), 1050), 25U) << "a new trail begins at once";
    unsigned now = 1060;
    for (; now <= 1140; now += 10) points_after(skidding_at(13.5), now);
    EXPECT_EQ(view.skid_points.size(), 28U) << "standing, one every 30 ms";
}

TEST(SkidTrail, OldPointsGoByAgeAndByNumber) {
    PlayerView view;
    unsigned const start = 0xFFFFFF00U; // the tick counter may wrap
    update_skid_trail(view, skidding_at(0), start);
    update_skid_trail(view, CarState{}, start + 4000);
    EXPECT_EQ(view.skid_points.size(), 1U);
    update_skid_trail(view, CarState{}, start + 4001);
    EXPECT_TRUE(view.skid_points.empty());
    for (int step = 0; step < 300; ++step) update_skid_trail(view, skidding_at(step * 3), 10);
    EXPECT_EQ(view.skid_points.size(), 4096U);
    EXPECT_GT(view.skid_points.front().x, 0.0);
}

TEST(SkidTrail, DrawsTwoFadingMarksBesideTheCentreLine) {
    Canvas canvas(60, 60);
    PlayerView view;
    view.skid_points = {{1, 2, 0, 1000}, {1.5, 2, 0, 1000}, {2, 2, 0, 1000}};
    for (auto const& [now, alpha] : {std::pair{1000U, 230}, {3000U, 115}, {5000U, 0}}) {
        canvas.clear(WHITE);
        draw_skids(canvas.renderer(), view, 0, 0, now, {0, 0, 60, 60});
        // The right wheel is 5.35 beside the middle at 36 and 2.6 wide.
        EXPECT_NEAR(canvas.at(22, 41).r, 255 - 230 * alpha / 255, 2);
        EXPECT_EQ(canvas.at(22, 30).r, canvas.at(22, 41).r) << "both wheels alike";
        EXPECT_EQ(canvas.at(22, 36).r, 255) << "nothing between them";
    }
}

TEST(SkidTrail, StraightPartsMayBeDrawnAtOnceButNoBendIsCut) {
    Canvas canvas(60, 60);
    canvas.clear(WHITE);
    PlayerView view;
    view.skid_points = {{1, 2, 0, 0}, {1.2, 2, 0, 0}, {1.5, 2, 0, 0}, {1.5, 2.5, 0, 0}};
    draw_skids(canvas.renderer(), view, 0, 0, 0, {0, 0, 60, 60});
    EXPECT_LT(canvas.at(22, 41).r, 50) << "before the bend";
    EXPECT_LT(canvas.at(26, 46).r, 50) << "behind it";
    EXPECT_EQ(canvas.at(22, 45).r, 255) << "on the short cut";
}

TEST(SkidTrail, JoinsOnlyNeighboursAndStaysInsideTheClip) {
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
    EXPECT_EQ(SDL_RenderIsClipEnabled(canvas.renderer()), SDL_FALSE);
}
