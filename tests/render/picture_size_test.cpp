#include "render/image.h"
#include "render/picture_size.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

void expect_size(std::string const& path, int w, int h) {
    SDL_Point const size = picture_size(path.c_str());
    EXPECT_TRUE(size.x == w && size.y == h) << size.x << " x " << size.y;
}

} // namespace

TEST(PictureSize, AgreesWithTheDecoders) {
    TempDir const dir;
    std::string const path = dir.file("picture");
    SurfaceHandle const picture = make_surface(300, 70, {1, 2, 3, 255});
    ASSERT_EQ(IMG_SavePNG(picture.get(), path.c_str()), 0);
    expect_size(path, 300, 70);
    ASSERT_EQ(IMG_SaveJPG(picture.get(), path.c_str(), 90), 0);
    expect_size(path, 300, 70);
    EXPECT_NE(load_picture(path.c_str()), nullptr);
    ASSERT_EQ(SDL_SaveBMP(picture.get(), path.c_str()), 0);
    expect_size(path, 300, 70);
    EXPECT_NE(load_picture(path.c_str()), nullptr);
}

TEST(PictureSize, ReadsDamagedHeadsSoftly) {
    TempDir const dir;
    std::string const path = dir.file("picture");
    expect_size(dir.file("missing"), 0, 0);
    expect_size(dir.path(), 0, 0);
    for (std::string const& bytes :
         {""s, "\x89PNG"s, std::string(100, '\xff'), "\xff\xd8"s + std::string(40, '\xff'),
          "\xff\xd8\xff\xe0\0\1"s + std::string(40, '\0'),
          "\xff\xd8\xff\xc0\0\x11\x08"s + std::string(19, '\xe0'),
          "GIF89a"s + std::string(100, '\x20'),
          // Heads that claim 60000 x 60000 pixels, and a height as far from 0 as there is.
          "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\xea\x60\0\0\xea\x60\x08\x06"s +
              std::string(70, '\0'),
          "BM"s + std::string(12, '\0') + "\x28\0\0\0\x80\x96\x98\0\0\0\0\x80"s +
              std::string(40, '\0')}) {
        write_file(path, bytes);
        SDL_Point const size = picture_size(path.c_str());
        EXPECT_TRUE(size.x >= 0 && size.y >= 0);
        EXPECT_EQ(load_picture(path.c_str()), nullptr);
    }
    expect_size(path, 10'000'000, 2147483647);
}
