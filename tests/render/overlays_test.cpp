#include "render/colors.h"
#include "render/overlays.h"
#include "render/scene.h"
#include "support/canvas.h"

#include <algorithm>

namespace {

constexpr SDL_Rect LEFT_HALF = {0, 0, 640, 720};

// Brightest value of one channel in `area`; `canvas` is black beneath.
template <typename Channel>
int brightest(Canvas const& canvas, SDL_Rect const& area, Channel channel) {
    int most = 0;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            most = std::max<int>(most, channel(canvas.at(x, y)));
        }
    }
    return most;
}

int green(SDL_Color c) {
    return c.g;
}

struct OverlayScene {
    Canvas canvas{1280, 720};
    MonoFonts mono;
    PlayerView view;
};

} // namespace

TEST(LapOverlay, FadesInItsLast350Milliseconds) {
    OverlayScene scene;
    scene.view.lap_overlay_until_ms = 2500;
    scene.view.lap_overlay_time_ms = 23450;
    SDL_Rect const middle = {0, 310, 640, 100};
    auto const strength_at = [&](unsigned now) {
        scene.canvas.clear(BLACK);
        render_lap_overlay(scene.canvas.renderer(), LEFT_HALF, scene.view, scene.mono.fonts, now);
        return brightest(scene.canvas, middle, green);
    };
    EXPECT_NEAR(strength_at(1000), 245 * 220 / 255, 2);
    EXPECT_EQ(scene.canvas.count_other({640, 0, 640, 720}, BLACK), 0) << "in this half only";
    EXPECT_NEAR(strength_at(2150), 245 * 220 / 255, 2); // 350 left
    EXPECT_NEAR(strength_at(2325), 245 * 110 / 255, 2);
    EXPECT_LE(strength_at(2499), 1);
    EXPECT_EQ(strength_at(2500), 0);
}

TEST(LapOverlay, SaysHowGoodTheLapWas) {
    OverlayScene scene;
    scene.view.lap_overlay_until_ms = 2500;
    auto const draw = [&](bool best, int record) {
        scene.view.lap_overlay_is_best = best;
        scene.view.lap_overlay_record = record;
        scene.canvas.clear(BLACK);
        render_lap_overlay(scene.canvas.renderer(), LEFT_HALF, scene.view, scene.mono.fonts, 1000);
    };
    SDL_Rect const time = {0, 310, 640, 100};
    SDL_Rect const below = {0, 418, 640, 60};
    auto const blue = [](SDL_Color c) { return c.b; };
    auto const red = [](SDL_Color c) { return c.r; };
    draw(true, 0);
    EXPECT_NEAR(brightest(scene.canvas, time, red), 150 * 220 / 255, 2);
    EXPECT_EQ(scene.canvas.count_other(below, BLACK), 0);
    draw(false, 1);
    EXPECT_NEAR(brightest(scene.canvas, time, red), 245 * 220 / 255, 2);
    EXPECT_NEAR(brightest(scene.canvas, below, green), 220, 2) << "yellow: a personal best";
    EXPECT_NEAR(brightest(scene.canvas, below, blue), 40 * 220 / 255, 2);
    draw(false, 2);
    EXPECT_NEAR(brightest(scene.canvas, below, green), 45 * 220 / 255, 2) << "red: a lap record";
    EXPECT_NEAR(brightest(scene.canvas, below, red), 220, 2);
}

TEST(LastLapFlash, FlashesTwice) {
    OverlayScene scene;
    auto const shows = [&](unsigned now) {
        scene.canvas.clear(BLACK);
        render_last_lap_flash(scene.canvas.renderer(), LEFT_HALF, scene.view, scene.mono.fonts,
                              now);
        return scene.canvas.count_other(LEFT_HALF, BLACK) > 0;
    };
    EXPECT_FALSE(shows(0)); // none under way
    scene.view.last_lap_flash_ms = 1000;
    for (unsigned const on : {0U, 1000U, 1319U, 1420U, 1739U}) EXPECT_TRUE(shows(on)) << on;
    for (unsigned const off : {1320U, 1419U, 1740U, 1840U, 9000U}) EXPECT_FALSE(shows(off)) << off;
}

TEST(BigWords, WinnerAndGameOverFollowTheirStrength) {
    OverlayScene scene;
    auto const& canvas = scene.canvas;
    render_winner_overlay(canvas.renderer(), LEFT_HALF, scene.mono.fonts, 0);
    EXPECT_EQ(canvas.count_other(LEFT_HALF, BLACK), 0);
    render_winner_overlay(canvas.renderer(), LEFT_HALF, scene.mono.fonts, 255);
    EXPECT_GT(canvas.count({0, 120, 640, 120}, {238, 185, 35, 255}), 1000);

    scene.canvas.clear({255, 255, 255, 255});
    render_game_over(canvas.renderer(), 1280, 720, scene.mono.fonts, -1.0F);
    EXPECT_EQ(canvas.count_other({0, 0, 1280, 720}, {255, 255, 255, 255}), 0);
    render_game_over(canvas.renderer(), 1280, 720, scene.mono.fonts, 1.0F);
    EXPECT_EQ(canvas.count_other({0, 0, 1280, 30}, {255, 255, 255, 255}), 0) << "bars stay bright";
    EXPECT_EQ(canvas.count_other({0, 30, 1280, 100}, {70, 70, 70, 255}, 1), 0) << "dimmed by 185";
    EXPECT_GT(canvas.count({0, 260, 1280, 100}, {225, 55, 55, 255}), 1000);
    EXPECT_GT(canvas.count({0, 380, 1280, 30}, {220, 225, 235, 255}), 50);

    scene.canvas.clear({255, 255, 255, 255});
    render_divider(canvas.renderer(), 1280, 720);
    EXPECT_EQ(canvas.count({638, 0, 4, 720}, BLACK), 4 * 720);
    EXPECT_EQ(canvas.count({0, 0, 1280, 720}, BLACK), 4 * 720);
}

TEST(Intro, FitsThePictureAndBlinksThePrompt) {
    OverlayScene scene;
    auto const& canvas = scene.canvas;
    SurfaceHandle const picture = make_surface(16, 9, {0, 0, 200, 255});
    TextureHandle const texture(SDL_CreateTextureFromSurface(canvas.renderer(), picture.get()));
    auto const frame = [&](int w, int h, unsigned now) {
        render_intro(canvas.renderer(), texture.get(), w, h, 1280, 720, scene.mono.fonts, now);
    };
    SDL_Rect const prompt = {0, 640, 1280, 60};
    for (SDL_Point const size : {SDL_Point{1280, 720}, {1920, 1080}, {2560, 1440}, {16, 9}}) {
        frame(size.x, size.y, 600);
        EXPECT_EQ(canvas.count({0, 0, 1280, 720}, {0, 0, 200, 255}), 1280 * 720);
    }
    frame(100, 100, 999); // a square one: bars at both sides
    EXPECT_EQ(canvas.count({0, 0, 280, 720}, BLACK), 280 * 720);
    EXPECT_EQ(canvas.count({280, 0, 720, 720}, {0, 0, 200, 255}), 720 * 720);
    frame(200, 50, 700); // a wide one: bars above and below
    EXPECT_EQ(canvas.count({0, 200, 1280, 320}, {0, 0, 200, 255}), 1280 * 320);
    EXPECT_EQ(canvas.count({0, 0, 1280, 200}, BLACK), 1280 * 200);
    EXPECT_EQ(canvas.count_other(prompt, BLACK), 0);
    frame(200, 50, 1599);
    EXPECT_GT(canvas.count(prompt, {255, 230, 80, 255}), 100);
}
