#include "render/image.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>

namespace {

SDL_Color pixel_of(SurfaceHandle const& surface, int x, int y) {
    return surface_pixel(surface.get(), x, y);
}

// Colours that follow no pattern, so that pictures compress little and no two places are alike.
SurfaceHandle make_indexed(int w, int h) {
    SurfaceHandle surface(SDL_CreateRGBSurfaceWithFormat(0, w, h, 8, SDL_PIXELFORMAT_INDEX8));
    std::mt19937 noise(7); // NOLINT: the same picture in every run
    auto const byte = [&noise] { return static_cast<std::uint8_t>(noise() % 200); };
    std::array<SDL_Color, 200> colors{};
    for (SDL_Color& color : colors) color = {byte(), byte(), byte(), 255};
    SDL_SetPaletteColors(surface->format->palette, colors.data(), 0, 200);
    std::generate_n(static_cast<std::uint8_t*>(surface->pixels), surface->pitch * h, byte);
    return surface;
}

bool same_pixels(SDL_Surface const* one, SDL_Surface const* other) {
    SDL_Rect const all{0, 0, one->w, one->h};
    return one->w == other->w && one->h == other->h &&
           surface_pixels(one, all) == surface_pixels(other, all);
}

SDL_Point whole(SDL_Point size) {
    return size;
}

// A folder with one picture in all kinds of file: with a palette, with alpha and without.
struct PictureFiles : testing::Test {
    void SetUp() override {
        ASSERT_EQ(IMG_SavePNG(indexed.get(), dir.file("indexed").c_str()), 0);
        ASSERT_EQ(IMG_SavePNG(packed.get(), dir.file("packed").c_str()), 0);
        SurfaceHandle const rgb(SDL_ConvertSurfaceFormat(packed.get(), SDL_PIXELFORMAT_RGB24, 0));
        ASSERT_EQ(IMG_SavePNG(rgb.get(), dir.file("rgb").c_str()), 0);
    }
    std::string broken(std::string const& bytes) {
        write_file(dir.file("broken"), bytes);
        return dir.file("broken");
    }

    TempDir dir;
    // Higher than a band of the upload, and not a whole number of bands.
    SurfaceHandle indexed = make_indexed(61, 150);
    SurfaceHandle packed = to_pixel_format(indexed.get());
};

} // namespace

TEST(DownscaleBox, AveragesByTheAreaThatEachSourcePixelCovers) {
    SurfaceHandle const source = make_surface(3, 1, {90, 0, 0, 255});
    set_surface_pixel(source.get(), 1, 0, {0, 90, 0, 255});
    set_surface_pixel(source.get(), 2, 0, {0, 0, 90, 255});
    SurfaceHandle const out(downscale_box(source.get(), 2, 1));
    // Each output pixel takes one source pixel whole and half of the middle one.
    EXPECT_THAT(surface_pixels(out.get(), {0, 0, 2, 1}),
                testing::ElementsAre(SDL_Color{60, 30, 0, 255}, SDL_Color{0, 30, 60, 255}));
    EXPECT_EQ(out->format->format, PIXEL_FORMAT);
    EXPECT_EQ(downscale_box(nullptr, 1, 1), nullptr);
}

TEST(DownscaleBox, TransparentPixelsLendNoColour) {
    SurfaceHandle const source = make_surface(4, 2, {0, 255, 0, 0}); // bright, but not there
    set_surface_pixel(source.get(), 0, 0, {200, 10, 0, 128});
    SurfaceHandle const other(SDL_ConvertSurfaceFormat(source.get(), SDL_PIXELFORMAT_ARGB8888, 0));
    for (SurfaceHandle const* format : {&source, &other}) {
        SurfaceHandle const out(downscale_box(format->get(), 2, 1));
        EXPECT_EQ(pixel_of(out, 0, 0), (SDL_Color{200, 10, 0, 32}));
        EXPECT_EQ(pixel_of(out, 1, 0), (SDL_Color{0, 0, 0, 0}));
    }
    EXPECT_EQ(pixel_of(other, 0, 0), (SDL_Color{200, 10, 0, 128})); // left alone
}

TEST_F(PictureFiles, ReduceToTheAverageOfTheWholePicture) {
    auto const third = [](SDL_Point size) { return SDL_Point{size.x / 3, size.y / 3}; };
    SurfaceHandle const expected(downscale_box(packed.get(), 20, 50));
    for (char const* name : {"indexed", "packed", "rgb"}) {
        SCOPED_TRACE(name);
        SurfaceHandle const reduced = load_reduced(dir.file(name).c_str(), third);
        ASSERT_TRUE(reduced);
        EXPECT_TRUE(same_pixels(reduced.get(), expected.get()));
        SurfaceHandle const unreduced = load_reduced(dir.file(name).c_str(), whole);
        ASSERT_TRUE(unreduced);
        EXPECT_TRUE(same_pixels(unreduced.get(), packed.get()));
    }
}

TEST_F(PictureFiles, AreShownAsTheyAreInEveryKindOfPixel) {
    set_surface_pixel(packed.get(), 60, 149, {200, 0, 0, 0});
    ASSERT_EQ(IMG_SavePNG(packed.get(), dir.file("clear").c_str()), 0);
    for (char const* name : {"indexed", "clear"}) {
        SCOPED_TRACE(name);
        bool const clear = name == std::string("clear");
        Canvas canvas(61, 150);
        canvas.clear({90, 90, 90, 255});
        int w = 0;
        int h = 0;
        TextureHandle const texture =
            load_texture(canvas.renderer(), dir.file(name).c_str(), &w, &h);
        ASSERT_TRUE(texture) << SDL_GetError();
        EXPECT_EQ(w, 61);
        EXPECT_EQ(h, 150);
        SDL_BlendMode mode = SDL_BLENDMODE_INVALID;
        SDL_GetTextureBlendMode(texture.get(), &mode);
        EXPECT_EQ(mode, clear ? SDL_BLENDMODE_BLEND : SDL_BLENDMODE_NONE);
        SDL_RenderCopy(canvas.renderer(), texture.get(), nullptr, nullptr);
        EXPECT_EQ(canvas.pixels({3, 0, 1, h}), surface_pixels(packed.get(), {3, 0, 1, h}));
        EXPECT_EQ(canvas.at(60, 149) == (SDL_Color{90, 90, 90, 255}), clear);
    }
}

TEST_F(PictureFiles, AreRefusedWhenBrokenAndThePlayerIsToldWhy) {
    Canvas const canvas(4, 4);
    std::string const bytes = read_file(dir.file("indexed"));
    std::string flipped = bytes;
    flipped[bytes.size() / 2] = static_cast<char>(~flipped[bytes.size() / 2]);
    for (std::string const& wrong :
         {bytes.substr(0, 0), bytes.substr(0, 20), bytes.substr(0, 60),
          bytes.substr(0, bytes.size() / 2), bytes.substr(0, bytes.size() - 30), flipped}) {
        SCOPED_TRACE(wrong.size());
        EXPECT_FALSE(load_reduced(broken(wrong).c_str(), whole));
        int w = 7;
        int h = 7;
        EXPECT_FALSE(load_texture(canvas.renderer(), dir.file("broken").c_str(), &w, &h));
        EXPECT_EQ(w, 0);
        EXPECT_EQ(h, 0);
    }
    EXPECT_FALSE(load_reduced(dir.file("none").c_str(), whole));
    EXPECT_FALSE(load_picture(dir.file("none").c_str()));
    int size = 0;
    auto const complaint = [&](std::string const& path) {
        EXPECT_FALSE(load_texture(canvas.renderer(), path.c_str(), &size, &size));
        return std::string(SDL_GetError());
    };
    EXPECT_NE(complaint(broken("no picture, by any head")).find("is no PNG"), std::string::npos);
    EXPECT_NE(complaint(dir.file("none")).find("open"), std::string::npos);
}
