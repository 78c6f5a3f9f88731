#include "records/miniature.h"
#include "render/colors.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

namespace {

std::string save_png(TempDir const& dir, int w, int h,
                     std::function<SDL_Color(int x, int y)> const& paint) {
    SurfaceHandle const picture = make_surface(w, h, {});
    for (int i = 0; i < w * h; ++i) {
        set_surface_pixel(picture.get(), i % w, i / w, paint(i % w, i / w));
    }
    EXPECT_EQ(IMG_SavePNG(picture.get(), dir.file("p.png").c_str()), 0);
    return dir.file("p.png");
}

SDL_Color black(int /*x*/, int /*y*/) {
    return BLACK;
}

SurfaceHandle miniature(std::string const& png, std::vector<SDL_FPoint> const& points = {},
                        int grid_w = 0, int grid_h = 0) {
    return SurfaceHandle(build_miniature(png, points, grid_w, grid_h));
}

constexpr SDL_Color PAINT{220, 30, 30, 255};

// How many pixels are not black.
std::ptrdiff_t painted(SurfaceHandle const& picture) {
    auto const pixels = surface_pixels(picture.get(), {0, 0, picture->w, picture->h});
    return std::ptrdiff_t{picture->w} * picture->h -
           std::count(pixels.begin(), pixels.end(), BLACK);
}

} // namespace

TEST(Miniature, ReducesToALongSideOf520) {
    TempDir const dir;
    for (auto const& [w, h, out_w, out_h] : {std::array{400, 300, 400, 300},
                                             {520, 20, 520, 20},
                                             {1040, 780, 520, 390},
                                             {700, 1000, 364, 520},
                                             {2000, 1, 520, 1}}) {
        SurfaceHandle const out = miniature(save_png(dir, w, h, black));
        ASSERT_NE(out, nullptr);
        EXPECT_EQ(out->w, out_w);
        EXPECT_EQ(out->h, out_h);
    }
}

TEST(Miniature, AveragesPlainlyAndFlattensOnWhite) {
    TempDir const dir;
    // Blocks of 2 x 2: three pixels of 10 and one of 13, sum 43, mean 10.75.
    SurfaceHandle const even = miniature(save_png(dir, 1040, 4, [](int x, int y) {
        return SDL_Color{0, static_cast<std::uint8_t>(x % 2 + y % 2 == 0 ? 13 : 10), 0, 255};
    }));
    EXPECT_EQ(surface_pixel(even.get(), 519, 1).g, 10);

    // 780 columns on 520: output pixel 1 covers columns 1 (half) and 2, which count alike.
    SurfaceHandle const uneven = miniature(save_png(dir, 780, 3, [](int x, int /*y*/) {
        return SDL_Color{static_cast<std::uint8_t>(x % 3 == 1 ? 100 : 0), 0, 0, 255};
    }));
    EXPECT_EQ(surface_pixel(uneven.get(), 0, 0).r, 50);
    EXPECT_EQ(surface_pixel(uneven.get(), 1, 0).r, 50);

    // Half transparent black and its neighbour opaque black: alpha 191 of the mean of the colours.
    SurfaceHandle const clear = miniature(save_png(dir, 1040, 2, [](int x, int /*y*/) {
        if (x < 2) return SDL_Color{200, 0, 0, 0};
        return SDL_Color{0, 100, 0, static_cast<std::uint8_t>(x % 2 == 0 ? 127 : 255)};
    }));
    EXPECT_EQ(surface_pixel(clear.get(), 0, 0), WHITE);
    SDL_Color const grey = surface_pixel(clear.get(), 9, 0);
    EXPECT_EQ(grey.r, std::lround((1 - 191 / 255.0) * 255));
    EXPECT_EQ(grey.g, std::lround(100 * 191 / 255.0 + (1 - 191 / 255.0) * 255));
    EXPECT_EQ(grey.a, 255);
}

TEST(Miniature, DrawsTheLapFromCellsToPixels) {
    TempDir const dir;
    std::string const png = save_png(dir, 440, 220, black);
    // Grid of 88 x 22 cells: a cell is 5 pixels wide and 10 high. The line's radius is 2.
    SurfaceHandle const out = miniature(png, {{8, 5}, {80, 5}, {80, 15}}, 88, 22);
    EXPECT_EQ(surface_pixel(out.get(), 37, 50), BLACK);
    for (int x = 41; x < 400; ++x) ASSERT_EQ(surface_pixel(out.get(), x, 50), PAINT) << x;
    EXPECT_EQ(surface_pixel(out.get(), 200, 46), BLACK);
    EXPECT_EQ(surface_pixel(out.get(), 200, 53), BLACK);
    EXPECT_EQ(surface_pixel(out.get(), 400, 149), PAINT);
    EXPECT_EQ(surface_pixel(out.get(), 200, 149), BLACK);

    SurfaceHandle const dot = miniature(png, {{44, 11}}, 88, 22);
    EXPECT_EQ(painted(dot), 16);
    // Its corners are 2.12 from its middle, covered by 0.38.
    EXPECT_EQ(surface_pixel(dot.get(), 221, 111).r,
              std::lround(220 * (2.5 - 1.5 * std::sqrt(2.0))));
    EXPECT_EQ(painted(miniature(png, {{44, 11}}, 0, 22)), 0) << "no grid, no line";

    // Small pictures have a line of radius 1.2: beside the full middle, 0.7 of a pixel each side.
    SurfaceHandle const small =
        miniature(save_png(dir, 100, 10, black), {{0, 5.5}, {100, 5.5}}, 100, 10);
    EXPECT_EQ(surface_pixel(small.get(), 50, 5), PAINT);
    EXPECT_EQ(surface_pixel(small.get(), 50, 3), BLACK);
}

TEST(Miniature, ComesBackFromLinesThatLeaveThePicture) {
    TempDir const dir;
    std::string const png = save_png(dir, 100, 100, black);
    float const inf = std::numeric_limits<float>::infinity();
    std::vector<SDL_FPoint> jumps{{50, 50}, {1e6F, 50}, {-1e6F, 50}};
    SurfaceHandle const out = miniature(png, jumps, 100, 100);
    for (int x = 0; x < 100; ++x) ASSERT_EQ(surface_pixel(out.get(), x, 50), PAINT) << x;
    EXPECT_EQ(surface_pixel(out.get(), 20, 60), BLACK);
    jumps = {{1e30F, -1e30F}, {inf, 0}, {std::nanf(""), 3}, {3e38F, 3e38F}, {50, 50}};
    EXPECT_NE(miniature(png, jumps, 1, 1), nullptr);
    EXPECT_EQ(miniature(dir.file("missing.png")), nullptr);
}
