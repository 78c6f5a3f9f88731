#include "records/ghost_sprite.h"
#include "records/ghost_tuning_screen.h"
#include "render/colors.h"
#include "support/canvas.h"
#include "support/child.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace {

constexpr SDL_Color CLEAR{10, 20, 30, 0};
constexpr SDL_Color SOLID{200, 100, 50, 255};
constexpr SDL_Color RIM{118, 0, 3, 255};

bool same(SDL_Color a, SDL_Color b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

SurfaceHandle ghost_of(SurfaceHandle const& source, int outline) {
    return SurfaceHandle(ghost_transform(source.get(), outline, RIM));
}

bool is_rim(SurfaceHandle const& ghost, int x, int y) {
    return same(surface_pixel(ghost.get(), x, y), RIM);
}

// The grey that a pixel of this colour turns to.
int grey(SDL_Color color) {
    SurfaceHandle const ghost = ghost_of(make_surface(1, 1, color), 0);
    SDL_Color const out = surface_pixel(ghost.get(), 0, 0);
    EXPECT_EQ(out.r, out.g);
    EXPECT_EQ(out.r, out.b);
    EXPECT_EQ(out.a, color.a);
    return out.r;
}

TEST(GhostTransform, GreysByLightAndKeepsAlpha) {
    EXPECT_EQ(grey(WHITE), 255);
    EXPECT_EQ(grey({0, 0, 0, 255}), 40);
    EXPECT_EQ(grey({200, 100, 50, 255}), 164); // 59.8 + 58.7 + 5.7 + 40 = 164.2
    EXPECT_EQ(grey({10, 0, 0, 1}), 42);        // nearly transparent is solid, too
    EXPECT_EQ(ghost_transform(nullptr, 35, RIM), nullptr);
}

TEST(GhostTransform, TransparentPictureStaysAndTheSourceIsNotTouched) {
    SurfaceHandle const clear = make_surface(9, 7, CLEAR);
    EXPECT_TRUE(same(surface_pixel(ghost_of(clear, 35).get(), 4, 3), CLEAR));
    SurfaceHandle const solid = make_surface(9, 7, SOLID);
    SurfaceHandle const ghost = ghost_of(solid, 3);
    EXPECT_TRUE(same(surface_pixel(solid.get(), 0, 0), SOLID));
    EXPECT_TRUE(is_rim(ghost, 0, 0));
}

TEST(GhostTransform, EdgeOfThePictureActsLikeTransparency) {
    SurfaceHandle const ghost = ghost_of(make_surface(20, 30, SOLID), 3);
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 20; ++x) {
            // An edge pixel is at a distance of 1, so a rim of 3 takes distances 1 and 2.
            int const distance = 1 + std::min({x, y, 19 - x, 29 - y});
            EXPECT_EQ(is_rim(ghost, x, y), distance < 3) << x << "," << y;
        }
    }
}

TEST(GhostTransform, RimEndsBeforeItsWidth) {
    SurfaceHandle const solid = make_surface(90, 90, SOLID);
    SurfaceHandle const ghost = ghost_of(solid, 35);
    EXPECT_TRUE(is_rim(ghost, 45, 33));  // 34 from the edge
    EXPECT_FALSE(is_rim(ghost, 45, 34)); // exactly 35
    for (int const none : {0, 1}) EXPECT_FALSE(is_rim(ghost_of(solid, none), 0, 0));
    EXPECT_TRUE(is_rim(ghost_of(solid, 2), 0, 0));
}

TEST(GhostTransform, DistanceRunsRoundAHoleByChamferSteps) {
    constexpr int MIDDLE = 30;
    SurfaceHandle const source = make_surface(61, 61, SOLID);
    set_surface_pixel(source.get(), MIDDLE, MIDDLE, CLEAR);
    SurfaceHandle const ghost = ghost_of(source, 12);
    for (int y = 14; y < 47; ++y) {
        for (int x = 14; x < 47; ++x) {
            int const dx = std::abs(x - MIDDLE);
            int const dy = std::abs(y - MIDDLE);
            double const distance =
                std::max(dx, dy) - std::min(dx, dy) + std::min(dx, dy) * 1.4142135;
            bool const hole = dx == 0 && dy == 0;
            EXPECT_EQ(is_rim(ghost, x, y), !hole && distance < 12.0) << x << "," << y;
        }
    }
    EXPECT_TRUE(same(surface_pixel(ghost.get(), MIDDLE, MIDDLE), CLEAR));
}

TEST(GhostTransform, SemiTransparentRimKeepsItsAlpha) {
    SurfaceHandle const ghost = ghost_of(make_surface(3, 3, {9, 9, 9, 77}), 2);
    EXPECT_TRUE(same(surface_pixel(ghost.get(), 0, 0), {RIM.r, RIM.g, RIM.b, 77}));
}

TEST(GhostTexture, ComesFromAFileAndIsEmptyWithoutOne) {
    TempDir const folder;
    Canvas const canvas(64, 64);
    SurfaceHandle const art = make_surface(200, 400, SOLID);
    ASSERT_EQ(IMG_SavePNG(art.get(), folder.file("car.png").c_str()), 0);
    EXPECT_TRUE(ghost_make_texture(canvas.renderer(), folder.file("car.png").c_str(), RIM));
    EXPECT_FALSE(ghost_make_texture(canvas.renderer(), folder.file("no.png").c_str(), RIM));
    write_file(folder.file("broken.png"), "no picture");
    EXPECT_FALSE(ghost_make_texture(canvas.renderer(), folder.file("broken.png").c_str(), RIM));
}

// How many of the alphas 0, 100 and 255 show black on white at this threshold.
int black_columns(int threshold) {
    SurfaceHandle const source = make_surface(3, 1, {50, 60, 70, 0});
    set_surface_pixel(source.get(), 1, 0, {50, 60, 70, 100});
    set_surface_pixel(source.get(), 2, 0, {50, 60, 70, 255});
    Canvas canvas(3, 1);
    canvas.clear(WHITE);
    TextureHandle const texture(
        make_silhouette_texture(canvas.renderer(), source.get(), threshold));
    SDL_RenderCopy(canvas.renderer(), texture.get(), nullptr, nullptr);
    EXPECT_EQ(canvas.count({0, 0, 3, 1}, WHITE) + canvas.count({0, 0, 3, 1}, {0, 0, 0, 255}), 3);
    return canvas.count({0, 0, 3, 1}, {0, 0, 0, 255});
}

TEST(Silhouette, IsBlackAboveTheThresholdOnly) {
    EXPECT_EQ(black_columns(0), 2);
    EXPECT_EQ(black_columns(99), 2);
    EXPECT_EQ(black_columns(100), 1);
    EXPECT_EQ(black_columns(255), 0);
    Canvas const canvas(3, 1);
    EXPECT_EQ(make_silhouette_texture(canvas.renderer(), nullptr, 0), nullptr);
}

TEST(DrawFitted, KeepsProportionsAndCentres) {
    Canvas canvas(100, 80);
    SurfaceHandle const wide = make_surface(40, 10, WHITE);
    TextureHandle const texture(SDL_CreateTextureFromSurface(canvas.renderer(), wide.get()));
    draw_fitted(canvas.renderer(), texture.get(), {10, 10, 80, 60});
    EXPECT_EQ(canvas.count({10, 30, 80, 20}, WHITE), 80 * 20);
    EXPECT_EQ(canvas.count({0, 0, 100, 80}, WHITE), 80 * 20);
    canvas.clear({0, 0, 0, 255});
    draw_fitted(canvas.renderer(), nullptr, {10, 10, 80, 60});
    EXPECT_EQ(canvas.count({0, 0, 100, 80}, WHITE), 0);
}

void push_key(SDL_Scancode key) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.scancode = key;
    SDL_PushEvent(&event);
}

TEST(GhostTuningScreen, KeysChangeTheMeasuresWithinTheirBounds) {
    ChildResult const child = run_child([] {
        SDL_Init(SDL_INIT_VIDEO);
        Canvas const canvas(320, 180);
        push_key(SDL_SCANCODE_RIGHT);
        push_key(SDL_SCANCODE_LEFT);
        push_key(SDL_SCANCODE_A);
        push_key(SDL_SCANCODE_DOWN); // already at its least
        for (int i = 0; i < 65; ++i) push_key(SDL_SCANCODE_UP);
        push_key(SDL_SCANCODE_ESCAPE);
        std::printf("%d\n", run_test_ghost(nullptr, canvas.renderer()) ? 1 : 0);
        SDL_Event quit{};
        quit.type = SDL_QUIT;
        SDL_PushEvent(&quit);
        std::printf("%d\n", run_test_ghost(nullptr, canvas.renderer()) ? 1 : 0);
    });
    EXPECT_EQ(child.status, 0);
    std::string wanted = "outline K = 35 px\nalpha threshold = 0 (alpha <= 0 is transparent)\n"
                         "outline K = 36 px\noutline K = 35 px\n";
    for (int i = 4; i < 259; i += 4) {
        std::string const t = std::to_string(std::min(i, 255));
        wanted.append("alpha threshold = ").append(t);
        wanted.append(" (alpha <= ").append(t).append(" is transparent)\n");
    }
    wanted += "1\noutline K = 35 px\nalpha threshold = 0 (alpha <= 0 is transparent)\n0\n";
    EXPECT_EQ(child.out, wanted);
}

} // namespace
