#include "render/image.h"
#include "screens/edge_points.h"
#include "support/canvas.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A finished picture of the game folder; without a surface if it does not load.
struct Picture {
    explicit Picture(char const* name)
        : surface(load_picture((std::string{BRINDLE_GAME_DIR "/art/"} + name).c_str())) {}

    int width() const { return surface != nullptr ? surface->w : 0; }
    int height() const { return surface != nullptr ? surface->h : 0; }
    SDL_Color at(int x, int y) const { return surface_pixel(surface.get(), x, y); }
    SDL_Rect whole() const { return {0, 0, width(), height()}; }

    // The share of a rectangle's pixels for which `test` holds.
    template <class Test>
    double share(SDL_Rect const& box, Test test) const {
        int hits = 0;
        for (int y = box.y; y < box.y + box.h; ++y) {
            for (int x = box.x; x < box.x + box.w; ++x) {
                hits += test(at(x, y)) ? 1 : 0;
            }
        }
        return static_cast<double>(hits) / (box.w * box.h);
    }

    SurfaceHandle surface;
};

bool is_solid(SDL_Color p) {
    return p.a > 200;
}
bool is_clear(SDL_Color p) {
    return p.a == 0;
}

double luma(SDL_Color p) {
    return 0.299 * p.r + 0.587 * p.g + 0.114 * p.b;
}

TEST(Art, CarsFillTheSameFootprintInTheirOwnColours) {
    Picture const red("red4.png");
    Picture const blue("blue4.png");
    for (Picture const* car : {&red, &blue}) {
        ASSERT_NE(car->surface, nullptr) << SDL_GetError();
        EXPECT_GE(car->height(), 500);
        EXPECT_EQ(car->height(), 2 * car->width());
        EXPECT_TRUE(is_clear(car->at(0, 0)));
        EXPECT_GT(car->share(car->whole(), is_solid), 0.75);
    }
    auto const reddish = [](SDL_Color p) {
        return is_solid(p) && p.r > p.b + 60 && p.r > p.g + 60;
    };
    auto const bluish = [](SDL_Color p) { return is_solid(p) && p.b > p.r + 60; };
    EXPECT_GT(red.share(red.whole(), reddish), 0.3);
    EXPECT_LT(red.share(red.whole(), bluish), 0.15);
    EXPECT_GT(blue.share(blue.whole(), bluish), 0.3);
    EXPECT_LT(blue.share(blue.whole(), reddish), 0.1);
}

TEST(Art, TheTitleEndsAboveTheHeadingsAndHasPlacesForSparkles) {
    Picture const header("menu_header_alpha.png");
    ASSERT_NE(header.surface, nullptr) << SDL_GetError();
    EXPECT_GE(static_cast<double>(header.width()) / header.height(), 2.8);
    EXPECT_TRUE(is_clear(header.at(0, 0)));
    EXPECT_TRUE(is_clear(header.at(header.width() - 1, header.height() - 1)));
    EXPECT_GT(build_edge_points(header.surface.get()).size(), 1000U);
}

TEST(Art, ThePointerStartsAtItsCornerAndTheButtonIsWide) {
    Picture const pointer("mouse2b.png");
    ASSERT_NE(pointer.surface, nullptr) << SDL_GetError();
    EXPECT_GE(pointer.height(), 256);
    // The corner that clicks is solid within a pixel or two of the 25 that show.
    int const near_tip = pointer.height() / 12;
    EXPECT_TRUE(is_solid(pointer.at(near_tip, near_tip)));

    Picture const button("start_racing4.png");
    ASSERT_NE(button.surface, nullptr) << SDL_GetError();
    EXPECT_GE(button.width(), 4 * button.height());
}

TEST(Art, ThePosterIsDarkBehindThePrompt) {
    Picture const poster("intro.png");
    ASSERT_NE(poster.surface, nullptr) << SDL_GetError();
    EXPECT_GE(poster.width(), 2560);
    EXPECT_EQ(poster.width() * 9, poster.height() * 16);
    EXPECT_EQ(poster.share(poster.whole(), is_solid), 1.0);
    // The prompt stands in the middle, from about 0.88 to 0.96 of the height.
    SDL_Rect const prompt{poster.width() / 4, poster.height() * 87 / 100, poster.width() / 2,
                          poster.height() / 10};
    EXPECT_GT(poster.share(prompt, [](SDL_Color p) { return luma(p) < 70; }), 0.97);
}

} // namespace
