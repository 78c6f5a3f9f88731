#include "render/colors.h"
#include "render/overlays.h"
#include "render/scene.h"
#include "support/canvas.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr SDL_Rect LEFT_HALF = {0, 0, 640, 720};

constexpr SDL_Rect SCREEN = {0, 0, 1280, 720};

// A colour as it shows over black.
SDL_Color dimmed(SDL_Color color, int alpha) {
    auto const level = [alpha](int full) { return static_cast<std::uint8_t>(full * alpha / 255); };
    return {level(color.r), level(color.g), level(color.b), 255};
}

// The brightest value of each channel in `area`; `canvas` is black beneath.
SDL_Color brightest(Canvas const& canvas, SDL_Rect const& area) {
    SDL_Color most = BLACK;
    for (SDL_Color const c : canvas.pixels(area)) {
        most = {std::max(most.r, c.r), std::max(most.g, c.g), std::max(most.b, c.b), 255};
    }
    return most;
}

struct Overlays : testing::Test {
    Canvas canvas{1280, 720};
    MonoFonts mono;
    PlayerView view;
};

} // namespace

TEST_F(Overlays, LapTimeSaysHowGoodTheLapWasAndFades) {
    view.lap_overlay_until_ms = 2500;
    constexpr SDL_Color PERSONAL{255, 255, 40, 255};
    constexpr SDL_Color RECORD{255, 45, 45, 255};
    for (auto const& [now, best, record, alpha, time_red, color] :
         {std::tuple{1000U, false, 0, 220, 245, BLACK},
          {1000U, true, 0, 220, 150, BLACK},
          {1000U, false, 1, 220, 245, PERSONAL},
          {1000U, false, 2, 220, 245, RECORD},
          {2150U, false, 2, 220, 245, RECORD}, // 350 ms left
          {2325U, false, 2, 110, 245, RECORD},
          {2499U, false, 2, 0, 245, BLACK}}) {
        view.lap_overlay_is_best = best;
        view.lap_overlay_record = record;
        canvas.clear(BLACK);
        render_lap_overlay(canvas.renderer(), LEFT_HALF, view, mono.fonts, now);
        EXPECT_NEAR(brightest(canvas, {0, 310, 640, 100}).r, time_red * alpha / 255, 2);
        SDL_Color const below = brightest(canvas, {0, 418, 640, 60});
        EXPECT_LE(difference(below, dimmed(color, alpha)), 2) << now;
        EXPECT_EQ(canvas.count_other({640, 0, 640, 720}, BLACK), 0) << "in this half only";
    }
    canvas.clear(BLACK);
    render_lap_overlay(canvas.renderer(), LEFT_HALF, view, mono.fonts, 2500);
    EXPECT_EQ(canvas.count_other(LEFT_HALF, BLACK), 0);
}

TEST_F(Overlays, LastLapFlashesTwice) {
    auto const shows = [&](unsigned now) {
        canvas.clear(BLACK);
        render_last_lap_flash(canvas.renderer(), LEFT_HALF, view, mono.fonts, now);
        return canvas.count_other(LEFT_HALF, BLACK) > 0;
    };
    EXPECT_FALSE(shows(0)); // none under way
    view.last_lap_flash_ms = 1000;
    for (unsigned const on : {0U, 1000U, 1319U, 1420U, 1739U}) EXPECT_TRUE(shows(on)) << on;
    for (unsigned const off : {1320U, 1419U, 1740U, 1840U, 9000U}) EXPECT_FALSE(shows(off)) << off;
}

TEST_F(Overlays, WinnerAndGameOverFollowTheirStrength) {
    render_winner_overlay(canvas.renderer(), LEFT_HALF, mono.fonts, 0);
    EXPECT_EQ(canvas.count_other(LEFT_HALF, BLACK), 0);
    render_winner_overlay(canvas.renderer(), LEFT_HALF, mono.fonts, 255);
    EXPECT_GT(canvas.count({0, 120, 640, 120}, {238, 185, 35, 255}), 1000);

    canvas.clear(WHITE);
    render_game_over(canvas.renderer(), 1280, 720, mono.fonts, -1.0F);
    EXPECT_EQ(canvas.count(SCREEN, WHITE), 1280 * 720);
    render_game_over(canvas.renderer(), 1280, 720, mono.fonts, 1.0F);
    EXPECT_EQ(canvas.count({0, 0, 1280, 30}, WHITE), 1280 * 30) << "bars stay bright";
    EXPECT_EQ(canvas.count_other({0, 30, 1280, 100}, {70, 70, 70, 255}, 1), 0) << "dimmed by 185";
    EXPECT_GT(canvas.count({0, 260, 1280, 100}, {225, 55, 55, 255}), 1000);
    EXPECT_GT(canvas.count({0, 380, 1280, 30}, {220, 225, 235, 255}), 50);

    canvas.clear(WHITE);
    render_divider(canvas.renderer(), 1280, 720);
    EXPECT_EQ(canvas.count({638, 0, 4, 720}, BLACK), 4 * 720);
    EXPECT_EQ(canvas.count(SCREEN, BLACK), 4 * 720);
}

TEST_F(Overlays, IntroFitsThePictureAndBlinksThePrompt) {
    constexpr SDL_Color BLUE = {0, 0, 200, 255};
    SurfaceHandle const picture = make_surface(16, 9, BLUE);
    TextureHandle const texture(SDL_CreateTextureFromSurface(canvas.renderer(), picture.get()));
    // What of the screen a picture of this size covers, between black bars.
    for (auto const& [w, h, shown] : {std::tuple{2560, 1440, SCREEN},
                                      {16, 9, SCREEN},
                                      {100, 100, SDL_Rect{280, 0, 720, 720}},
                                      {200, 50, SDL_Rect{0, 200, 1280, 320}}}) {
        render_intro(canvas.renderer(), texture.get(), w, h, 1280, 720, mono.fonts, 600);
        EXPECT_EQ(canvas.count(shown, BLUE), shown.w * shown.h);
        EXPECT_EQ(canvas.count(SCREEN, BLACK), 1280 * 720 - shown.w * shown.h);
    }
    render_intro(canvas.renderer(), texture.get(), 200, 50, 1280, 720, mono.fonts, 1599);
    EXPECT_GT(canvas.count({0, 640, 1280, 60}, {255, 230, 80, 255}), 100);
}
