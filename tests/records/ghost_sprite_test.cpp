#include "records/ghost_sprite.h"
#include "records/ghost_tuning_screen.h"
#include "records/printed.h"
#include "render/colors.h"
#include "support/canvas.h"
#include "support/child.h"
#include "support/keys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr SDL_Color CLEAR{10, 20, 30, 0};
constexpr SDL_Color SOLID{200, 100, 50, 255};
constexpr SDL_Color RIM{118, 0, 3, 255};

SurfaceHandle ghost_of(SurfaceHandle const& source, int outline) {
    return SurfaceHandle(ghost_transform(source.get(), outline, RIM));
}

TEST(GhostTransform, GreysByLightAndKeepsAlpha) {
    auto const ghost_of_pixel = [](SDL_Color from, int outline) {
        return surface_pixel(ghost_of(make_surface(1, 1, from), outline).get(), 0, 0);
    };
    EXPECT_EQ(ghost_of_pixel(WHITE, 0), WHITE);
    EXPECT_EQ(ghost_of_pixel(BLACK, 0), (SDL_Color{40, 40, 40, 255}));
    EXPECT_EQ(ghost_of_pixel(SOLID, 0), (SDL_Color{164, 164, 164, 255})); // 59.8+58.7+5.7+40
    EXPECT_EQ(ghost_of_pixel({10, 0, 0, 1}, 0), (SDL_Color{42, 42, 42, 1})) << "solid, too";
    EXPECT_EQ(ghost_of_pixel({9, 9, 9, 77}, 2), (SDL_Color{RIM.r, RIM.g, RIM.b, 77}));
    EXPECT_EQ(ghost_transform(nullptr, 35, RIM), nullptr);
}

TEST(GhostTransform, RimFollowsTheEdgeAndRoundsHolesByChamferSteps) {
    constexpr int MIDDLE = 30;
    SurfaceHandle const source = make_surface(61, 61, SOLID);
    set_surface_pixel(source.get(), MIDDLE, MIDDLE, CLEAR);
    for (int const outline : {0, 1, 2, 12}) {
        SurfaceHandle const ghost = ghost_of(source, outline);
        for (int y = 0; y < 61; ++y) {
            for (int x = 0; x < 61; ++x) {
                auto const [less, more] = std::minmax({std::abs(x - MIDDLE), std::abs(y - MIDDLE)});
                double const from_hole = more - less + less * 1.4142135;
                double const from_edge = 1 + std::min({x, y, 60 - x, 60 - y});
                bool const rim = more > 0 && std::min(from_hole, from_edge) < outline;
                ASSERT_EQ(surface_pixel(ghost.get(), x, y) == RIM, rim) << x << "," << y;
            }
        }
        EXPECT_EQ(surface_pixel(ghost.get(), MIDDLE, MIDDLE), CLEAR);
    }
    EXPECT_EQ(surface_pixel(source.get(), 0, 0), SOLID) << "the source is not touched";
}

TEST(Silhouette, IsBlackAboveTheThresholdOnlyAndFitsItsPlace) {
    SurfaceHandle const source = make_surface(3, 1, CLEAR);
    set_surface_pixel(source.get(), 1, 0, {50, 60, 70, 100});
    set_surface_pixel(source.get(), 2, 0, {50, 60, 70, 255});
    Canvas canvas(3, 7);
    for (auto const& [threshold, black] : {std::pair{0, 2}, {99, 2}, {100, 1}, {255, 0}}) {
        canvas.clear(WHITE);
        TextureHandle const texture(
            make_silhouette_texture(canvas.renderer(), source.get(), threshold));
        draw_fitted(canvas.renderer(), texture.get(), {0, 0, 3, 7}); // keeps its proportions
        EXPECT_EQ(canvas.count({0, 3, 3, 1}, BLACK), black);
        EXPECT_EQ(canvas.count({0, 0, 3, 7}, WHITE), 21 - black);
    }
    EXPECT_EQ(make_silhouette_texture(canvas.renderer(), nullptr, 0), nullptr);
}

void push(SDL_Event event) {
    SDL_PushEvent(&event);
}

TEST(GhostTuningScreen, KeysChangeTheMeasuresWithinTheirBounds) {
    ChildResult const child = run_child([] {
        SDL_Init(SDL_INIT_VIDEO);
        Canvas const canvas(320, 180);
        for (SDL_Scancode const key : {SDL_SCANCODE_RIGHT, SDL_SCANCODE_LEFT, SDL_SCANCODE_A,
                                       SDL_SCANCODE_DOWN}) { // already at its least
            push(key_event(key));
        }
        for (int i = 0; i < 65; ++i) push(key_event(SDL_SCANCODE_UP));
        push(key_event(SDL_SCANCODE_ESCAPE));
        std::printf("%d\n", run_test_ghost(nullptr, canvas.renderer()) ? 1 : 0);
        push({.type = SDL_QUIT});
        std::printf("%d\n", run_test_ghost(nullptr, canvas.renderer()) ? 1 : 0);
    });
    EXPECT_EQ(child.status, 0);
    std::string const at_start =
        "outline K = 35 px\nalpha threshold = 0 (alpha <= 0 is transparent)\n";
    std::string wanted = at_start + "outline K = 36 px\noutline K = 35 px\n";
    for (int i = 4; i < 259; i += 4) {
        int const t = std::min(i, 255);
        wanted += printed("alpha threshold = %d (alpha <= %d is transparent)\n", t, t);
    }
    wanted += "1\n" + at_start + "0\n";
    EXPECT_EQ(child.out, wanted);
}

} // namespace
