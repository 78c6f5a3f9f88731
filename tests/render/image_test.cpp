#include "render/image.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

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
