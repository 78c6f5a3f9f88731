#include "render/colors.h"
#include "render/hud.h"
#include "render/scene.h"
#include "render/text.h"
#include "support/canvas.h"

#include <cmath>

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

struct HudScene {
    Canvas canvas{640, 60};
    MonoFonts mono;
    PlayerView view;
    CarState car;
    int laps = 3;
    unsigned lap_ms = 75300;
    unsigned total_ms = 0;
    bool ghost = false;

    void draw() {
        canvas.clear({0, 0, 0, 255});
        view.body_color = {200, 10, 20, 255};
        render_hud(canvas.renderer(), {0, 0, 640, 60}, view, car, laps, lap_ms, total_ms,
                   mono.fonts, ghost);
    }
    [[nodiscard]] SDL_Point ink(SDL_Color color) const {
        return ink_columns(canvas, {0, 0, 640, 30}, color);
    }
};

} // namespace

TEST(TimeFormat, RoundsToHundredthsBeforeChoosingTheForm) {
    EXPECT_EQ(format_time_short(0), "0.00");
    EXPECT_EQ(format_time_short(75300), "75.30");
    EXPECT_EQ(format_time_long(59994), "59.99");
    EXPECT_EQ(format_time_long(59995), "1:00.00");
    EXPECT_EQ(format_time_long(3599999), "60:00.00");
    EXPECT_EQ(format_time_short(4294967290U), "4294967.29");
}

TEST(DrawText, SizeIsLogicalWhateverTheScale) {
    for (double const scale : {1.0, 2.0}) {
        Canvas canvas(200, 60);
        MonoFonts const mono(scale);
        int w = 0;
        int h = 0;
        ASSERT_TRUE(measure_text(mono.fonts.hud_time, scale, "88.88", &w, &h));
        EXPECT_NEAR(w, 60, 1);
        int drawn_w = 0;
        draw_ttf(canvas.renderer(), mono.fonts.hud_time, scale, "88.88", 10, 5, WHITE, &drawn_w,
                 nullptr, 255);
        EXPECT_NEAR(drawn_w, w, 1);
        SDL_Point const ink = ink_columns(canvas, {0, 0, 200, 60}, WHITE);
        EXPECT_GE(ink.x, 10);
        EXPECT_LE(ink.y, 10 + w);
        EXPECT_GT(ink.y, w - 4);
    }
    int w = 1;
    EXPECT_FALSE(measure_text(nullptr, 1.0, "x", &w, &w));
    EXPECT_EQ(w, 0);
}

TEST(DrawText, EmbossedLettersHaveOutlineShadowAndLitRims) {
    Canvas canvas(120, 140);
    canvas.clear({0, 0, 255, 255});
    MonoFonts const mono;
    draw_embossed(canvas.renderer(), mono.fonts.lap_time, 1.0, "|", 20, 10, {200, 150, 50}, LIGHT,
                  {100, 50, 0}, 255);
    int const y = 60; // half way down the bar
    SDL_Rect const row = {0, y, 120, 1};
    SDL_Point const face = ink_columns(canvas, row, {200, 150, 50, 255});
    SDL_Point const dark = ink_columns(canvas, row, {100, 50, 0, 255});
    SDL_Point const lit = ink_columns(canvas, row, {255, 240, 200, 255});
    SDL_Point const outline = ink_columns(canvas, row, {0, 0, 0, 255});
    ASSERT_GT(face.x, 0);
    EXPECT_LT(dark.y, face.x) << "the left rim is dark";
    EXPECT_GT(lit.x, face.y) << "the right rim is lit";
    EXPECT_NEAR(dark.x - outline.x, 4, 1) << "the outline's width";
    EXPECT_NEAR(outline.y - lit.y, 4, 1);
    SDL_Color const shadow = canvas.at(outline.y + 3, y);
    EXPECT_NEAR(shadow.b, 145, 2) << "shadow at 110 of 255";

    canvas.clear({0, 0, 255, 255});
    draw_embossed(canvas.renderer(), mono.fonts.lap_time, 1.0, "|", 20, 10, {}, LIGHT, {}, 0);
    draw_embossed(canvas.renderer(), nullptr, 1.0, "|", 20, 10, {}, LIGHT, {}, 255);
    EXPECT_EQ(canvas.count({0, 0, 120, 140}, {0, 0, 255, 255}), 120 * 140);
}

TEST(Hud, ColumnsStandWhereTheWidestNumbersPutThem) {
    HudScene scene;
    scene.view.best_lap_ms = 59990;
    scene.view.laps_done = 1;
    scene.total_ms = 133000;
    scene.ghost = true;
    scene.draw();
    Fonts const& f = scene.mono.fonts;
    int const gauge = 140 - MonoFonts::width(f.hud_time, "0");
    int const number = 5 + MonoFonts::width(f.hud_small, "99:99.99");
    int const ghost_left = 640 - gauge - 22 - MonoFonts::width(f.hud_label, "GHOST");
    int const total_left = ghost_left - 14 - number - MonoFonts::width(f.hud_label, "TOTAL");
    int const best_right = total_left - 14;
    int const best_left = best_right - number - MonoFonts::width(f.hud_label, "BEST");
    int const indent = 2 * MonoFonts::width(f.hud_label, "0") / 3;

    SDL_Point const ghost = scene.ink({180, 160, 220, 255});
    EXPECT_NEAR(ghost.x, ghost_left, 2);
    SDL_Point const total = scene.ink({240, 240, 240, 255});
    EXPECT_NEAR(total.x, total_left + indent, 2);
    EXPECT_NEAR(total.y, ghost_left - 14, 2);
    SDL_Point const best = scene.ink({120, 220, 140, 255});
    EXPECT_NEAR(best.x, best_left + indent, 2);
    EXPECT_NEAR(best.y, best_right, 2);
    SDL_Point const lap_time = scene.ink({255, 240, 130, 255});
    EXPECT_NEAR(lap_time.y, best_left - 14, 3);
    EXPECT_NEAR(lap_time.x, best_left - 14 - MonoFonts::width(f.hud_time, "75.30"), 3);
    EXPECT_NEAR(scene.ink({200, 200, 210, 255}).x, 26, 2);
    EXPECT_EQ(scene.canvas.count({6, 9, 12, 12}, {200, 10, 20, 255}), 144) << "the colour chip";
}

TEST(Hud, FirstLapShowsNeitherBestNorTotal) {
    HudScene scene;
    scene.draw();
    EXPECT_EQ(scene.ink({120, 220, 140, 255}).x, -1);
    EXPECT_EQ(scene.ink({240, 240, 240, 255}).x, -1);
    EXPECT_EQ(scene.ink({180, 160, 220, 255}).x, -1);
    EXPECT_GT(scene.ink({255, 240, 130, 255}).x, 0);
}

TEST(Hud, GaugeFillsWithSpeedAndNeverOverflows) {
    HudScene scene;
    int const width = 140 - MonoFonts::width(scene.mono.fonts.hud_time, "0");
    SDL_Rect const ground = {640 - width - 8, 12, width, 6};
    auto const filled = [&](double speed, bool skidding, SDL_Color color) {
        scene.car.speed = speed;
        scene.car.skidding = skidding;
        scene.draw();
        EXPECT_EQ(scene.canvas.count({640 - 8, 12, 8, 6}, {0, 0, 0, 255}), 48);
        return scene.canvas.count(ground, color) / 6;
    };
    EXPECT_EQ(filled(0.0, false, {80, 200, 80, 255}), 0);
    EXPECT_EQ(filled(0.155, false, {80, 200, 80, 255}), width / 2);
    EXPECT_EQ(filled(5.0, true, {220, 80, 80, 255}), width);
}

TEST(Hud, LapLabelStopsAtTheLastLapAndCopesWithoutFonts) {
    HudScene scene;
    auto const label_end = [&](int done, int laps) {
        scene.view.laps_done = done;
        scene.laps = laps;
        scene.draw();
        return ink_columns(scene.canvas, {0, 0, 200, 30}, {200, 200, 210, 255}).y;
    };
    EXPECT_EQ(label_end(2, 3), label_end(3, 3)); // LAP 3/3, also once finished
    EXPECT_LT(label_end(2, 0), label_end(2, 3)); // LAP 3 without a limit

    Canvas canvas(640, 60);
    Fonts const none;
    render_hud(canvas.renderer(), {0, 0, 640, 60}, scene.view, scene.car, 3, 0, 0, none, true);
    EXPECT_EQ(canvas.count({6, 9, 12, 12}, {200, 10, 20, 255}), 144);
    EXPECT_EQ(canvas.count({640 - 148, 12, 140, 6}, {0, 0, 0, 255}), 0) << "the gauge's ground";
}
