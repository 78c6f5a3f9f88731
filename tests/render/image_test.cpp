#include "render/image.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>

namespace {

SDL_Color pixel_of(SurfaceHandle const& surface, int x, int y) {
    return surface_pixel(surface.get(), x, y);
}

void expect_color(SDL_Color actual, SDL_Color expected) {
    EXPECT_EQ(actual.r, expected.r);
    EXPECT_EQ(actual.g, expected.g);
    EXPECT_EQ(actual.b, expected.b);
    EXPECT_EQ(actual.a, expected.a);
}

// Colours that follow no pattern, so that pictures compress little and no two places are alike.
SurfaceHandle make_indexed(int w, int h) {
    SurfaceHandle surface(SDL_CreateRGBSurfaceWithFormat(0, w, h, 8, SDL_PIXELFORMAT_INDEX8));
    std::mt19937 noise(7); // NOLINT: the same picture in every run
    std::array<SDL_Color, 200> colors{};
    for (SDL_Color& color : colors) {
        auto const bits = static_cast<std::uint32_t>(noise());
        color = {static_cast<std::uint8_t>(bits), static_cast<std::uint8_t>(bits >> 8U),
                 static_cast<std::uint8_t>(bits >> 16U), 255};
    }
    SDL_SetPaletteColors(surface->format->palette, colors.data(), 0, 200);
    for (int y = 0; y < h; ++y) {
        auto* row =
            static_cast<std::uint8_t*>(surface->pixels) + std::ptrdiff_t{y} * surface->pitch;
        std::generate_n(row, w, [&noise] { return static_cast<std::uint8_t>(noise() % 200); });
    }
    return surface;
}

bool same_pixels(SDL_Surface* one, SDL_Surface* other) {
    if (one->w != other->w || one->h != other->h) return false;
    for (int y = 0; y < one->h; ++y) {
        std::uint32_t const* row = pixel_row(one, y);
        if (!std::equal(row, row + one->w, pixel_row(other, y))) return false;
    }
    return true;
}

} // namespace

TEST(DownscaleBox, AveragesByTheAreaThatEachSourcePixelCovers) {
    SurfaceHandle const source = make_surface(3, 1, {0, 0, 0, 255});
    set_surface_pixel(source.get(), 0, 0, {90, 0, 0, 255});
    set_surface_pixel(source.get(), 1, 0, {0, 90, 0, 255});
    set_surface_pixel(source.get(), 2, 0, {0, 0, 90, 255});
    SurfaceHandle const out(downscale_box(source.get(), 2, 1));
    // Each output pixel takes one source pixel whole and half of the middle one.
    expect_color(pixel_of(out, 0, 0), {60, 30, 0, 255});
    expect_color(pixel_of(out, 1, 0), {0, 30, 60, 255});
    EXPECT_EQ(out->format->format, PIXEL_FORMAT);
}

TEST(DownscaleBox, TransparentPixelsLendNoColour) {
    SurfaceHandle const source = make_surface(4, 2, {0, 255, 0, 0}); // bright, but not there
    set_surface_pixel(source.get(), 0, 0, {200, 10, 0, 128});
    SurfaceHandle const out(downscale_box(source.get(), 2, 1));
    expect_color(pixel_of(out, 0, 0), {200, 10, 0, 32});
    expect_color(pixel_of(out, 1, 0), {0, 0, 0, 0});
}

TEST(DownscaleBox, ReadsOtherFourByteFormatsAndLeavesTheSourceAlone) {
    SurfaceHandle const source(
        SDL_CreateRGBSurfaceWithFormat(0, 2, 2, 32, SDL_PIXELFORMAT_ARGB8888));
    SDL_FillRect(source.get(), nullptr, SDL_MapRGBA(source->format, 10, 20, 30, 255));
    SurfaceHandle const out(downscale_box(source.get(), 1, 1));
    expect_color(pixel_of(out, 0, 0), {10, 20, 30, 255});
    expect_color(surface_pixel(source.get(), 1, 1), {10, 20, 30, 255});
    EXPECT_EQ(source->locked, 0);
    EXPECT_EQ(downscale_box(nullptr, 1, 1), nullptr);
}

TEST(LoadPicture, GivesOneFormatWhateverTheFileHolds) {
    TempDir const dir;
    SurfaceHandle const rgb(SDL_CreateRGBSurfaceWithFormat(0, 3, 2, 24, SDL_PIXELFORMAT_RGB24));
    SDL_FillRect(rgb.get(), nullptr, SDL_MapRGB(rgb->format, 1, 2, 3));
    ASSERT_EQ(IMG_SavePNG(rgb.get(), dir.file("a.png").c_str()), 0);
    SurfaceHandle const loaded = load_picture(dir.file("a.png").c_str());
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->format->format, PIXEL_FORMAT);
    expect_color(pixel_of(loaded, 2, 1), {1, 2, 3, 255});

    write_file(dir.file("b.png"), "not a picture");
    EXPECT_FALSE(load_picture(dir.file("b.png").c_str()));
    EXPECT_FALSE(load_picture(dir.file("none.png").c_str()));
}

TEST(LoadReduced, GivesTheAverageOfTheWholePictureInEveryKindOfFile) {
    TempDir const dir;
    SurfaceHandle const indexed = make_indexed(61, 47);
    ASSERT_EQ(IMG_SavePNG(indexed.get(), dir.file("indexed").c_str()), 0);
    SurfaceHandle const packed = to_pixel_format(indexed.get());
    ASSERT_EQ(IMG_SavePNG(packed.get(), dir.file("packed").c_str()), 0);
    auto const third = [](SDL_Point size) { return SDL_Point{size.x / 3, size.y / 3}; };
    auto const whole = [](SDL_Point size) { return size; };
    SurfaceHandle const expected(downscale_box(packed.get(), 20, 15));
    for (char const* name : {"indexed", "packed"}) {
        SCOPED_TRACE(name);
        SurfaceHandle const reduced = load_reduced(dir.file(name).c_str(), third);
        ASSERT_TRUE(reduced);
        EXPECT_TRUE(same_pixels(reduced.get(), expected.get()));
        SurfaceHandle const unreduced = load_reduced(dir.file(name).c_str(), whole);
        ASSERT_TRUE(unreduced);
        EXPECT_TRUE(same_pixels(unreduced.get(), packed.get()));
    }
}

TEST(LoadReduced, TakesNoBrokenPicture) {
    TempDir const dir;
    ASSERT_EQ(IMG_SavePNG(make_indexed(61, 470).get(), dir.file("a").c_str()), 0);
    std::string const bytes = read_file(dir.file("a"));
    auto const whole = [](SDL_Point size) { return size; };
    for (std::size_t const kept :
         {std::size_t{0}, std::size_t{20}, std::size_t{60}, bytes.size() / 2, bytes.size() - 30}) {
        write_file(dir.file("cut"), bytes.substr(0, kept));
        EXPECT_FALSE(load_reduced(dir.file("cut").c_str(), whole)) << kept << " bytes";
    }
    std::string flipped = bytes;
    flipped[bytes.size() / 2] = static_cast<char>(~flipped[bytes.size() / 2]);
    write_file(dir.file("flipped"), flipped);
    EXPECT_FALSE(load_reduced(dir.file("flipped").c_str(), whole));
    EXPECT_FALSE(load_reduced(dir.file("none").c_str(), whole));
}

TEST(LoadTexture, ShowsWhatTheFileHoldsInEveryKindOfPixel) {
    TempDir const dir;
    // Higher than a band of the upload, and not a whole number of bands.
    int const height = 150;
    SurfaceHandle const rgba = make_surface(5, height, {10, 20, 30, 255});
    set_surface_pixel(rgba.get(), 4, height - 1, {200, 0, 0, 0});
    set_surface_pixel(rgba.get(), 0, 64, {1, 2, 3, 255});
    ASSERT_EQ(IMG_SavePNG(rgba.get(), dir.file("rgba").c_str()), 0);
    SurfaceHandle const indexed(
        SDL_CreateRGBSurfaceWithFormat(0, 5, height, 8, SDL_PIXELFORMAT_INDEX8));
    std::array<SDL_Color, 2> const colors{{{10, 20, 30, 255}, {1, 2, 3, 255}}};
    SDL_SetPaletteColors(indexed->format->palette, colors.data(), 0, 2);
    SDL_Rect const spot = {0, 64, 1, 1};
    SDL_FillRect(indexed.get(), &spot, 1);
    ASSERT_EQ(IMG_SavePNG(indexed.get(), dir.file("indexed").c_str()), 0);

    for (auto const& [name, blend] :
         {std::pair{"rgba", SDL_BLENDMODE_BLEND}, std::pair{"indexed", SDL_BLENDMODE_NONE}}) {
        SCOPED_TRACE(name);
        Canvas canvas(5, height);
        canvas.clear({90, 90, 90, 255});
        int w = 0;
        int h = 0;
        TextureHandle const texture =
            load_texture(canvas.renderer(), dir.file(name).c_str(), &w, &h);
        ASSERT_TRUE(texture) << SDL_GetError();
        EXPECT_EQ(w, 5);
        EXPECT_EQ(h, height);
        SDL_BlendMode mode = SDL_BLENDMODE_INVALID;
        SDL_GetTextureBlendMode(texture.get(), &mode);
        EXPECT_EQ(mode, blend);
        SDL_RenderCopy(canvas.renderer(), texture.get(), nullptr, nullptr);
        expect_color(canvas.at(0, 64), {1, 2, 3, 255});
        expect_color(canvas.at(3, 63), {10, 20, 30, 255});
        expect_color(canvas.at(3, height - 1), {10, 20, 30, 255});
        if (blend == SDL_BLENDMODE_BLEND) {
            expect_color(canvas.at(4, height - 1), {90, 90, 90, 255});
        }
    }
}

TEST(LoadTexture, RefusesWhatIsNoPictureAndSaysWhyToThePlayer) {
    TempDir const dir;
    Canvas const canvas(4, 4);
    int w = 7;
    int h = 7;
    ASSERT_EQ(IMG_SavePNG(make_indexed(61, 470).get(), dir.file("whole").c_str()), 0);
    std::string const bytes = read_file(dir.file("whole"));
    write_file(dir.file("cut"), bytes.substr(0, bytes.size() / 2));
    EXPECT_FALSE(load_texture(canvas.renderer(), dir.file("cut").c_str(), &w, &h));
    EXPECT_EQ(w, 0);
    write_file(dir.file("noise"), "not a picture at all, by any head");
    EXPECT_FALSE(load_texture(canvas.renderer(), dir.file("noise").c_str(), &w, &h));
    EXPECT_EQ(w, 0);
    EXPECT_EQ(h, 0);
    EXPECT_NE(std::string(SDL_GetError()).find("is no PNG"), std::string::npos);
    EXPECT_FALSE(load_texture(canvas.renderer(), dir.file("missing").c_str(), &w, &h));
    EXPECT_NE(std::string(SDL_GetError()).find("open"), std::string::npos) << SDL_GetError();
}
