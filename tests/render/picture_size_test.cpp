#include "render/image.h"
#include "render/picture_size.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

SDL_Point size_of(TempDir const& dir, std::string const& bytes) {
    write_file(dir.file("picture"), bytes);
    return picture_size(dir.file("picture").c_str());
}

// The first bytes of a PNG that claims 60000 x 60000 pixels, 14 GB decoded.
std::string absurd_png() {
    return "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\xea\x60\0\0\xea\x60\x08\x06\0\0\0"s +
           std::string(64, '\0');
}

} // namespace

TEST(PictureSize, AgreesWithTheDecoders) {
    TempDir const dir;
    SurfaceHandle const picture = make_surface(300, 70, {1, 2, 3, 255});
    std::string const path = dir.file("picture");
    ASSERT_EQ(IMG_SavePNG(picture.get(), path.c_str()), 0);
    EXPECT_EQ(picture_size(path.c_str()).x, 300);
    EXPECT_EQ(picture_size(path.c_str()).y, 70);
    ASSERT_EQ(IMG_SaveJPG(picture.get(), path.c_str(), 90), 0);
    EXPECT_EQ(picture_size(path.c_str()).x, 300);
    EXPECT_EQ(picture_size(path.c_str()).y, 70);
    EXPECT_NE(load_picture(path.c_str()), nullptr);
    ASSERT_EQ(SDL_SaveBMP(picture.get(), path.c_str()), 0);
    EXPECT_EQ(picture_size(path.c_str()).x, 300);
    EXPECT_EQ(picture_size(path.c_str()).y, 70);
    EXPECT_NE(load_picture(path.c_str()), nullptr);
}

TEST(PictureSize, ReadsDamagedHeadsSoftly) {
    TempDir const dir;
    EXPECT_EQ(picture_size(dir.file("missing").c_str()).x, 0);
    EXPECT_EQ(picture_size(dir.path().c_str()).x, 0);
    for (std::string const& bytes :
         {""s, "\x89PNG"s, std::string(100, '\xff'), "\xff\xd8"s + std::string(40, '\xff'),
          "\xff\xd8\xff\xe0\0\1"s + std::string(40, '\0'),
          "\xff\xd8\xff\xc0\0\x11\x08"s + std::string(19, '\xe0'),
          "GIF89a"s + std::string(100, '\x20')}) {
        write_file(dir.file("picture"), bytes);
        SDL_Point const size = picture_size(dir.file("picture").c_str());
        EXPECT_TRUE(size.x >= 0 && size.y >= 0);
        EXPECT_EQ(load_picture(dir.file("picture").c_str()), nullptr);
    }
    EXPECT_EQ(size_of(dir, absurd_png()).x, 60000);
    EXPECT_EQ(load_picture(dir.file("picture").c_str()), nullptr);
    SDL_Point const bmp = size_of(dir, "BM"s + std::string(12, '\0') + "\x28\0\0\0"s +
                                           "\x80\x96\x98\0\0\0\0\x80"s + std::string(40, '\0'));
    EXPECT_EQ(bmp.x, 10'000'000);
    EXPECT_EQ(bmp.y, 2147483647) << "as far from 0 as a height can be";
    EXPECT_EQ(load_picture(dir.file("picture").c_str()), nullptr);
}
