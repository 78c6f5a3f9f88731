#include "render/car_sprite.h"
#include "render/colors.h"
#include "render/scene.h"
#include "support/canvas.h"

#include <cmath>

namespace {

constexpr SDL_Color RED = {200, 0, 0, 255};
constexpr SDL_Color YELLOW = {255, 255, 0, 255};
constexpr SDL_Rect SHEET = {0, 0, 100, 100};

void expect_size_after_load(Canvas const& canvas, SDL_Point from, SDL_Point expected) {
    SurfaceHandle const picture = make_surface(from.x, from.y, RED);
    TextureHandle const texture = car_texture_from_surface(canvas.renderer(), picture.get());
    SDL_Point size{};
    SDL_QueryTexture(texture.get(), nullptr, nullptr, &size.x, &size.y);
    EXPECT_EQ(size.x, expected.x) << from.x << " x " << from.y;
    EXPECT_EQ(size.y, expected.y) << from.x << " x " << from.y;
}

} // namespace

TEST(CarSprite, LongSideComesDownToTwiceTheCarOnTheScreen) {
    Canvas const canvas(300, 1080);
    expect_size_after_load(canvas, {500, 1000}, {22, 44}); // no logical size
    SDL_RenderSetLogicalSize(canvas.renderer(), 200, 720);
    expect_size_after_load(canvas, {500, 1000}, {33, 66});
    expect_size_after_load(canvas, {1000, 3}, {66, 1}); // too thin for a whole pixel
    expect_size_after_load(canvas, {60, 20}, {60, 20}); // never enlarged
    Canvas const low(300, 240);
    SDL_RenderSetLogicalSize(low.renderer(), 300, 720);
    expect_size_after_load(low, {100, 200}, {16, 32});
    EXPECT_FALSE(car_texture_from_surface(canvas.renderer(), nullptr));
    EXPECT_FALSE(load_car_texture(canvas.renderer(), "no/such.png"));
}

TEST(CarSprite, DrawsShadowThenCarAtItsHeading) {
    Canvas canvas(100, 100);
    SurfaceHandle const picture = make_surface(20, 40, RED);
    SDL_Rect const nose = {0, 0, 20, 6};
    SDL_FillRect(picture.get(), &nose, SDL_MapRGBA(picture->format, 255, 255, 0, 255));
    TextureHandle const texture = car_texture_from_surface(canvas.renderer(), picture.get());

    canvas.clear(WHITE);
    draw_car_at(canvas.renderer(), 50, 50, 0, texture.get(), RED, RED, 0);
    EXPECT_EQ(canvas.count(SHEET, WHITE), 10000); // and the fade does not stay on the texture:
    draw_car_at(canvas.renderer(), 50.5F, 50, -M_PI / 2, texture.get(), RED, RED, 255); // up
    EXPECT_EQ(canvas.at(50, 39).g, 255) << "nose";
    EXPECT_EQ(canvas.at(50, 39).b, 0);
    EXPECT_EQ(canvas.at(50, 58).r, 200) << "tail";
    EXPECT_EQ(canvas.at(50, 58).g, 0);
    EXPECT_EQ(canvas.count_other({44, 37, 13, 26}, WHITE), 13 * 26) << "13 x 26 at zoom level 0";
    EXPECT_EQ(canvas.count({50, 20, 1, 16}, WHITE), 16);
    EXPECT_NEAR(canvas.at(50, 64).r, 145, 2) << "the shadow, 110 of 255, two pixels down";
    EXPECT_EQ(canvas.count({50, 65, 1, 10}, WHITE), 10);

    draw_car_at(canvas.renderer(), 50, 50, 0, texture.get(), RED, RED, 255); // to the right
    EXPECT_EQ(canvas.at(60, 50).g, 255);
    EXPECT_EQ(canvas.at(40, 50).g, 0);
}

TEST(CarSprite, WithoutArtACarIsThreeQuads) {
    Canvas canvas(100, 100);
    SDL_SetRenderDrawBlendMode(canvas.renderer(), SDL_BLENDMODE_BLEND);
    canvas.clear(WHITE);
    ZOOM_LEVEL = 4; // half length 26.4, half width 13.2
    draw_car_at(canvas.renderer(), 50, 50, 0, nullptr, RED, YELLOW, 0);
    EXPECT_EQ(canvas.count(SHEET, WHITE), 10000);
    draw_car_at(canvas.renderer(), 50, 50, 0, nullptr, RED, YELLOW, 255);
    auto const is = [&](int x, int y, SDL_Color c) { return canvas.count({x, y, 1, 1}, c) == 1; };
    EXPECT_TRUE(is(27, 50, RED));
    EXPECT_TRUE(is(70, 50, YELLOW)) << "nose ahead";
    EXPECT_TRUE(is(73, 39, RED)) << "the nose is narrower at its front";
    EXPECT_TRUE(is(45, 50, {100, 0, 0, 255})) << "cabin in half the body's colour";
    EXPECT_TRUE(is(45, 60, RED)) << "beside the cabin";
    EXPECT_TRUE(is(50, 65, WHITE)) << "no shadow";
    EXPECT_TRUE(is(78, 50, WHITE));
}
