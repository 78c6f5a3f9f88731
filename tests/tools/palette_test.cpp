#include "support/canvas.h"
#include "track_compiler/blue_noise.h"
#include "track_compiler/palette.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    std::vector<SDL_Color> const pixels = surface_pixels(picture, area);
    auto const mean = [&pixels](std::uint8_t SDL_Color::*part) {
        std::size_t sum = 0;
        for (SDL_Color const& pixel : pixels) sum += pixel.*part;
        return static_cast<std::uint8_t>(sum / pixels.size());
    };
    return {mean(&SDL_Color::r), mean(&SDL_Color::g), mean(&SDL_Color::b), 255};
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
    std::vector<SDL_Color> const before = surface_pixels(picture.get(), {0, 0, 400, 300});
    std::vector<SDL_Color> const after = surface_pixels(shown.get(), {0, 0, 400, 300});
    for (std::size_t i = 0; i < after.size(); ++i) {
        ASSERT_LE(difference(after[i], before[i]), 24) << i;
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
    EXPECT_EQ(surface_pixels(shown.get(), {0, 0, 8, 8}),
              surface_pixels(picture.get(), {0, 0, 8, 8}));
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
    for (SDL_Color const& pixel : surface_pixels(shown.get(), {0, 100, 400, 60})) {
        auto const [least, most] = std::minmax({pixel.r, pixel.g, pixel.b});
        ASSERT_LE(most - least, 6);
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
