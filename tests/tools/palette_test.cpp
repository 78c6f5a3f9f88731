#include "support/canvas.h"
#include "track_compiler/blue_noise.h"
#include "track_compiler/palette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

// Grass with a fine grain and a slow drift of light, wider than any palette holds, and a flag.
SurfaceHandle meadow(int width, int height, SDL_Rect const& flag) {
    SurfaceHandle picture = make_surface(width, height, {0, 0, 0, 255});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            auto const part = [](int value) { return static_cast<std::uint8_t>(value); };
            int const grain = (x * 7 + y * 13) % 9;
            set_surface_pixel(
                picture.get(), x, y,
                {part(60 + x / 4 + grain), part(110 + y / 3 + grain), part(40 + (x + y) / 8), 255});
        }
    }
    SDL_FillRect(picture.get(), &flag, SDL_MapRGB(picture->format, 220, 30, 40));
    return picture;
}

SDL_Color mean_of(SDL_Surface* picture, SDL_Rect const& area) {
    int red = 0;
    int green = 0;
    int blue = 0;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            SDL_Color const pixel = surface_pixel(picture, x, y);
            red += pixel.r;
            green += pixel.g;
            blue += pixel.b;
        }
    }
    int const n = area.w * area.h;
    return {static_cast<std::uint8_t>(red / n), static_cast<std::uint8_t>(green / n),
            static_cast<std::uint8_t>(blue / n), 255};
}

int difference(SDL_Color a, SDL_Color b) {
    return std::max({std::abs(a.r - b.r), std::abs(a.g - b.g), std::abs(a.b - b.b)});
}

} // namespace

TEST(Palette, LooksLikeThePictureFromNearAndFar) {
    SDL_Rect const flag = {200, 100, 3, 2};
    SurfaceHandle const picture = meadow(400, 300, flag);
    SurfaceHandle const reduced = reduce_to_palette(picture.get());
    ASSERT_TRUE(reduced);
    EXPECT_EQ(reduced->format->format, std::uint32_t{SDL_PIXELFORMAT_INDEX8});
    SurfaceHandle const shown(SDL_ConvertSurface(reduced.get(), picture->format, 0));
    // No pixel is far off, and over a few of them nothing is left of the error.
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            ASSERT_LE(
                difference(surface_pixel(shown.get(), x, y), surface_pixel(picture.get(), x, y)),
                24)
                << x << ", " << y;
        }
    }
    for (int y = 0; y + 10 <= 90; y += 10) {
        SDL_Rect const patch = {y * 3, y, 10, 10};
        EXPECT_LE(difference(mean_of(shown.get(), patch), mean_of(picture.get(), patch)), 2) << y;
    }
    // Six red pixels of 120,000 keep their colour.
    EXPECT_LE(difference(surface_pixel(shown.get(), 201, 101), {220, 30, 40, 255}), 12);
}

TEST(Palette, KeepsFewColoursExactly) {
    SurfaceHandle const picture = make_surface(8, 8, {12, 34, 56, 255});
    set_surface_pixel(picture.get(), 3, 3, {200, 100, 50, 255});
    SurfaceHandle const reduced = reduce_to_palette(picture.get());
    SurfaceHandle const shown(SDL_ConvertSurface(reduced.get(), picture->format, 0));
    EXPECT_EQ(difference(surface_pixel(shown.get(), 3, 3), {200, 100, 50, 255}), 0);
    EXPECT_EQ(difference(surface_pixel(shown.get(), 7, 7), {12, 34, 56, 255}), 0);
}

// A road's greys must not turn blue and red, however many other colours ask for entries.
TEST(Palette, KeepsGreysGrey) {
    SurfaceHandle const picture = meadow(400, 300, {0, 0, 400, 80});
    for (int y = 100; y < 160; ++y) {
        for (int x = 0; x < 400; ++x) {
            auto const grey = static_cast<std::uint8_t>(60 + x / 8 + (x * 7 + y * 5) % 5);
            set_surface_pixel(picture.get(), x, y, {grey, grey, grey, 255});
        }
    }
    SurfaceHandle const reduced = reduce_to_palette(picture.get());
    SurfaceHandle const shown(SDL_ConvertSurface(reduced.get(), picture->format, 0));
    for (int y = 100; y < 160; ++y) {
        for (int x = 0; x < 400; ++x) {
            SDL_Color const pixel = surface_pixel(shown.get(), x, y);
            ASSERT_LE(std::max({pixel.r, pixel.g, pixel.b}) - std::min({pixel.r, pixel.g, pixel.b}),
                      6)
                << x << ", " << y;
        }
    }
}

// Whatever share of the thresholds is passed, every part of the square has its due.
TEST(BlueNoise, LiesEvenly) {
    constexpr std::size_t PART = 8;
    auto const& noise = blue_noise();
    for (std::size_t const share : {noise.size() / 8, noise.size() / 2}) {
        std::size_t const due = PART * PART * share / noise.size();
        for (std::size_t top = 0; top < BLUE_NOISE_SIDE; top += PART) {
            for (std::size_t left = 0; left < BLUE_NOISE_SIDE; left += PART) {
                std::size_t passed = 0;
                for (std::size_t i = 0; i < PART * PART; ++i) {
                    std::size_t const row = top + i / PART;
                    passed += noise[row * BLUE_NOISE_SIDE + left + i % PART] < share ? 1U : 0U;
                }
                EXPECT_NEAR(static_cast<double>(passed), static_cast<double>(due), 4.0);
            }
        }
    }
    std::vector<bool> seen(noise.size());
    for (std::uint16_t const threshold : noise) seen[threshold] = true;
    EXPECT_EQ(std::count(seen.begin(), seen.end(), false), 0);
}
