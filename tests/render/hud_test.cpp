#include "render/colors.h"
#include "render/hud.h"
#include "render/scene.h"
#include "render/text.h"
#include "support/canvas.h"

namespace {

constexpr RGB LIGHT = {255, 240, 200};

// First and last column of `area` with a pixel close to `color`; {-1, -1} if none.
SDL_Point ink_columns(Canvas const& canvas, SDL_Rect const& area, SDL_Color color) {
    SDL_Point ink = {-1, -1};
    for (int x = area.x; x < area.x + area.w; ++x) {
        SDL_Rect const column = {x, area.y, 1, area.h};
        if (canvas.count_other(column, color, 24) == area.h) continue;
        if (ink.x < 0) ink.x = x;
        ink.y = x;
    }
    return ink;
}

constexpr SDL_Color LAP_TIME = {255, 240, 130, 255};
constexpr SDL_Color LAP_LABEL = {200, 200, 210, 255};
constexpr SDL_Color BEST = {120, 220, 140, 255};
constexpr SDL_Color TOTAL = {240, 240, 240, 255};
constexpr SDL_Color GHOST = {180, 160, 220, 255};

struct Hud : testing::Test {
    void draw() {
        canvas.clear(BLACK);
        view.body_color = {200, 10, 20, 255};
        render_hud(canvas.renderer(), {0, 0, 640, 60}, view, car, laps, 75300, total_ms, mono.fonts,
                   total_ms > 0);
        EXPECT_EQ(canvas.count({6, 9, 12, 12}, view.body_color), 144) << "the colour chip";
    }
    SDL_Point ink(SDL_Color color) { return ink_columns(canvas, {0, 0, 640, 30}, color); }
    int width_of(char const* text) { return MonoFonts::width(mono.fonts.hud_label, text); }

    Canvas canvas{640, 60};
    MonoFonts mono;
    PlayerView view;
    CarState car;
    int laps = 3;
    unsigned total_ms = 0;
    int gauge = 140 - MonoFonts::width(mono.fonts.hud_time, "0");
};

} // namespace

TEST(TimeFormat, RoundsToHundredthsBeforeChoosingTheForm) {
    EXPECT_EQ(format_time_short(0), "0.00");
    EXPECT_EQ(format_time_short(75295), "75.30");
    EXPECT_EQ(format_time_long(59994), "59.99");
    EXPECT_EQ(format_time_long(59995), "1:00.00");
    EXPECT_EQ(format_time_long(3599999), "60:00.00");
    EXPECT_EQ(format_time_short(4294967290U), "4294967.29");
}

TEST(DrawText, SizeIsLogicalWhateverTheScale) {
    for (double const scale : {1.0, 2.0}) {
        Canvas const canvas(200, 60);
        MonoFonts const mono(scale);
        TTF_Font* const font = mono.fonts.hud_time;
        int w = 0;
        int h = 0;
        ASSERT_TRUE(measure_text(font, scale, "88.88", &w, &h));
        EXPECT_NEAR(w, 60, 1);
        draw_ttf(canvas.renderer(), font, scale, "88.88", 10, 5, WHITE, nullptr, nullptr, 255);
        SDL_Point const ink = ink_columns(canvas, {0, 0, 200, 60}, WHITE);
        EXPECT_NEAR(ink.x, 12, 2);
        EXPECT_NEAR(ink.y, 8 + w, 2);
        EXPECT_FALSE(measure_text(nullptr, scale, "x", &w, &h));
    }
}

TEST(DrawText, EmbossedLettersHaveOutlineShadowAndLitRims) {
    Canvas canvas(120, 140);
    canvas.clear({0, 0, 255, 255});
    MonoFonts const mono;
    draw_embossed(canvas.renderer(), mono.fonts.lap_time, 1.0, "|", 20, 10, {200, 150, 50}, LIGHT,
                  {100, 50, 0}, 255);
    int const y = 60; // half way down the bar
    auto const columns_of = [&](SDL_Color c) { return ink_columns(canvas, {0, y, 120, 1}, c); };
    SDL_Point const face = columns_of({200, 150, 50, 255});
    SDL_Point const dark = columns_of({100, 50, 0, 255});
    SDL_Point const lit = columns_of({255, 240, 200, 255});
    SDL_Point const outline = columns_of(BLACK);
    ASSERT_GT(face.x, 0);
    EXPECT_LT(dark.y, face.x) << "the left rim is dark";
    EXPECT_GT(lit.x, face.y) << "the right rim is lit";
    EXPECT_NEAR(dark.x - outline.x, 4, 1) << "the outline's width";
    EXPECT_NEAR(outline.y - lit.y, 4, 1);
    EXPECT_NEAR(canvas.at(outline.y + 3, y).b, 145, 2) << "shadow at 110 of 255";
}

TEST_F(Hud, ColumnsStandWhereTheWidestNumbersPutThem) {
    draw();
    for (SDL_Color const absent : {BEST, TOTAL, GHOST}) EXPECT_EQ(ink(absent).x, -1) << "lap 1";
    view.best_lap_ms = 59990;
    view.laps_done = 1;
    total_ms = 133000;
    draw();
    int const number = 5 + MonoFonts::width(mono.fonts.hud_small, "99:99.99");
    int const ghost_left = 640 - gauge - 22 - width_of("GHOST");
    int const total_left = ghost_left - 14 - number - width_of("TOTAL");
    int const best_left = total_left - 14 - number - width_of("BEST");
    int const time_width = MonoFonts::width(mono.fonts.hud_time, "75.30");
    int const indent = 2 * width_of("0") / 3;
    EXPECT_NEAR(ink(GHOST).x, ghost_left, 2);
    EXPECT_NEAR(ink(TOTAL).x, total_left + indent, 2);
    EXPECT_NEAR(ink(TOTAL).y, ghost_left - 14, 2);
    EXPECT_NEAR(ink(BEST).x, best_left + indent, 2);
    EXPECT_NEAR(ink(BEST).y, total_left - 14, 2);
    EXPECT_NEAR(ink(LAP_TIME).y, best_left - 14, 3);
    EXPECT_NEAR(ink(LAP_TIME).x, best_left - 14 - time_width, 3);
    EXPECT_NEAR(ink(LAP_LABEL).x, 26, 2);
}

TEST_F(Hud, GaugeFillsWithSpeedAndNeverOverflows) {
    constexpr SDL_Color GRIPPING = {80, 200, 80, 255};
    constexpr SDL_Color SLIDING = {220, 80, 80, 255};
    auto const filled = [&](double speed, bool skidding) {
        car.speed = speed;
        car.skidding = skidding;
        draw();
        EXPECT_EQ(canvas.count({640 - 8, 12, 8, 6}, BLACK), 48);
        return canvas.count({640 - gauge - 8, 12, gauge, 6}, skidding ? SLIDING : GRIPPING) / 6;
    };
    EXPECT_EQ(filled(0.0, false), 0);
    EXPECT_EQ(filled(0.155, false), gauge / 2);
    EXPECT_EQ(filled(5.0, true), gauge);
}

TEST_F(Hud, LapLabelStopsAtTheLastLapAndCopesWithoutFonts) {
    auto const label_end = [&](int done, int of) {
        view.laps_done = done;
        laps = of;
        draw();
        return ink_columns(canvas, {0, 0, 200, 30}, LAP_LABEL).y;
    };
    EXPECT_EQ(label_end(2, 3), label_end(3, 3)); // LAP 3/3, also once finished
    EXPECT_LT(label_end(2, 0), label_end(2, 3)); // LAP 3 without a limit
    Fonts const none;
    render_hud(canvas.renderer(), {0, 0, 640, 60}, view, car, 3, 0, 0, none, true);
    EXPECT_EQ(canvas.count({640 - 148, 12, 140, 6}, BLACK), 0) << "the gauge's ground";
}
