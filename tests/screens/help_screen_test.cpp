#include "render/colors.h"
#include "screens/help_own_keys.h"
#include "screens/help_screen.h"
#include "screens/help_shapes.h"
#include "screens/keyboard_layout.h"
#include "support/canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

namespace {

constexpr int W = 640;
constexpr int H = 360;
constexpr SDL_Rect ALL{0, 0, W, H};

// Where the keyboard stands on a page of W x H: 34% of the height, and centred.
SDL_Rect keyboard() {
    int const kh = static_cast<int>(0.34 * H);
    int const kw = static_cast<int>(std::lround(kh * KEYBOARD_W / KEYBOARD_H));
    return {(W - kw) / 2, static_cast<int>(0.4 * H) - kh / 2, kw, kh};
}

// The colour of a key's face a little below its upper edge, where no lettering comes; `along` is
// the share of the key's width.
SDL_Color face(Canvas const& canvas, KbKey const& key, double along = 0.5) {
    SDL_Rect const place = keyboard();
    SDL_Rect const cell = key_cell(key, place, place.w / KEYBOARD_W);
    return canvas.at(cell.x + static_cast<int>(along * cell.w), cell.y + 5);
}

TEST(KeyboardLayout, EveryAnnotationFindsTheKeyItMeans) {
    constexpr auto RIGHT_END = static_cast<float>(KEYBOARD_W);
    auto const expect_between = [](float left, float right, auto const& annos) {
        for (Anno const& anno : annos) {
            KbKey const* key = find_key(anno);
            ASSERT_NE(key, nullptr) << anno.key;
            EXPECT_TRUE(left <= key->x && key->x < right) << anno.key;
        }
    };
    expect_between(0.0F, RIGHT_END, ANNOS_MAJOR);
    expect_between(0.0F, RIGHT_END, ANNOS_MINOR);
    expect_between(0.0F, 6.0F, ANNOS_RED);
    expect_between(KEYPAD_X, RIGHT_END, ANNOS_BLUE);
    expect_between(9.1F, 15.0F, ANNOS_BLUE_ALT);
    Anno nowhere = ANNOS_RED[0];
    nowhere.x_min = 19;
    EXPECT_EQ(find_key(nowhere), nullptr);
}

// How many keys of a group are marked, and how many captions stand beside them.
std::pair<std::size_t, int> marked(std::vector<Anno> const& annos) {
    int captions = 0;
    for (Anno const& anno : annos) {
        EXPECT_NE(find_key(anno), nullptr) << anno.key;
        captions += *anno.text != '\0' ? 1 : 0;
    }
    return {annos.size(), captions};
}

TEST(KeyboardLayout, OwnKeysAreMarkedInPlaceOfTheBuiltInOnes) {
    using Marks = std::pair<std::size_t, int>;
    KeyBindings keys = builtin_keys();
    PlayerAnnos annos = player_annos(keys);
    EXPECT_EQ(marked(annos[0]), Marks(4, 4));
    EXPECT_EQ(marked(annos[1]), Marks(4, 4));
    EXPECT_EQ(marked(annos[2]), Marks(4, 4));
    keys[0] = {{{SDL_SCANCODE_A, SDL_SCANCODE_LEFT},
                {SDL_SCANCODE_D},
                {SDL_SCANCODE_W},
                {SDL_SCANCODE_S}}};
    keys[1][0] = {SDL_SCANCODE_KP_4, SDL_SCANCODE_AC_BACK}; // one of them is not drawn
    annos = player_annos(keys);
    EXPECT_EQ(marked(annos[0]), Marks(5, 4));
    EXPECT_EQ(marked(annos[1]), Marks(4, 4));
    EXPECT_EQ(marked(annos[2]), Marks(3, 3));
    for (KbKey const& key : KB_KEYS) EXPECT_EQ(find_key(scancode_of(key)), &key) << key.label;
}

TEST(HelpShapes, AreFilledFromEdgeToEdgeWithRoundCornersCut) {
    Canvas canvas(40, 30);
    fill_rrect(canvas.renderer(), {5, 5, 20, 16}, 4, WHITE);
    // Rows of the corner stand in by 4 - round(sqrt(16 - d * d)), d = 3, 2, 1, 0.
    for (auto const& [y, w] : {std::pair{5, 18}, {6, 18}, {8, 20}, {9, 20}, {16, 20}, {20, 18}}) {
        EXPECT_EQ(canvas.count({5, y, 20, 1}, WHITE), w) << "row " << y;
    }
    EXPECT_EQ(canvas.count({0, 0, 40, 30}, WHITE), 20 * 16 - 8);
    canvas.clear(BLACK);
    fill_rrect(canvas.renderer(), {5, 5, 0, 16}, 4, WHITE);
    EXPECT_EQ(canvas.count({0, 0, 40, 30}, WHITE), 0);
    fill_triangle(canvas.renderer(), {20, 5}, {10, 15}, {30, 15}, WHITE);
    for (int y = 5; y <= 15; ++y) {
        EXPECT_EQ(canvas.count({0, y, 40, 1}, WHITE), 2 * (y - 5) + 1) << "row " << y;
    }
    EXPECT_EQ(canvas.count({0, 16, 40, 14}, WHITE), 0);
}

struct HelpScreenTest : testing::Test {
    HelpScreenTest() { render_help_screen(canvas_.renderer(), W, H, page_, 1.0F); }

    Canvas canvas_{W, H};
    KeyboardTex page_;
};

TEST_F(HelpScreenTest, HighlightsLieOnTheirKeysAndOnNoOthers) {
    SDL_Color const plain = face(canvas_, KB_KEYS[16]); // "~" means nothing in the race
    EXPECT_LE(difference(plain, {46, 64, 108, 255}), 2);
    auto const expect_tint = [&](auto const& annos, SDL_Color tint, int alpha) {
        auto const mix = [alpha](int over, int under) {
            return static_cast<std::uint8_t>((over * alpha + under * (255 - alpha)) / 255);
        };
        SDL_Color const lit{mix(tint.r, plain.r), mix(tint.g, plain.g), mix(tint.b, plain.b), 255};
        for (Anno const& anno : annos) {
            EXPECT_LE(difference(face(canvas_, *find_key(anno)), lit), 2) << anno.key;
        }
    };
    expect_tint(ANNOS_RED, {235, 95, 85, 255}, 128);
    expect_tint(ANNOS_BLUE, {125, 150, 255, 255}, 128);
    expect_tint(ANNOS_BLUE_ALT, {125, 150, 255, 255}, 128);
    expect_tint(ANNOS_MAJOR, {235, 240, 255, 255}, 110);
    expect_tint(ANNOS_MINOR, {90, 96, 111, 255}, 110);
    int unlit = 0;
    for (KbKey const& key : KB_KEYS) { // a leader may cross one of the two places
        if (face(canvas_, key, 0.25) == plain || face(canvas_, key, 0.75) == plain) ++unlit;
    }
    EXPECT_EQ(unlit, 104 - 4 - 4 - 4 - 7 - 9);
}

TEST_F(HelpScreenTest, PageIsKeptForItsSizeAndDrawnAnewForAnother) {
    // A mark on the kept page shows that the next frame copies it and draws no new one.
    ASSERT_EQ(SDL_SetRenderTarget(canvas_.renderer(), page_.tex.get()), 0);
    SDL_Rect const mark{0, 0, 8, 8};
    SDL_SetRenderDrawColor(canvas_.renderer(), 1, 2, 3, 255);
    SDL_RenderFillRect(canvas_.renderer(), &mark);
    SDL_SetRenderTarget(canvas_.renderer(), nullptr);
    render_help_screen(canvas_.renderer(), W, H, page_, 1.0F);
    EXPECT_EQ(canvas_.at(4, 4), (SDL_Color{1, 2, 3, 255}));
    TextureHandle const smaller(SDL_CreateTexture(canvas_.renderer(), SDL_PIXELFORMAT_RGBA8888,
                                                  SDL_TEXTUREACCESS_TARGET, 400, 225));
    SDL_SetRenderTarget(canvas_.renderer(), smaller.get()); // as if the window had shrunk
    render_help_screen(canvas_.renderer(), W, H, page_, 1.0F);
    int page_w = 0;
    SDL_QueryTexture(page_.tex.get(), nullptr, nullptr, &page_w, nullptr);
    EXPECT_EQ(page_w, 400);
    SDL_SetRenderTarget(canvas_.renderer(), nullptr);
}

TEST_F(HelpScreenTest, FadesToBlackAndPutsTheRendererBack) {
    SDL_Color const full = canvas_.at(W / 2, H - 1);
    render_help_screen(canvas_.renderer(), 1280, 720, page_, 0.5F);
    EXPECT_NEAR(canvas_.at(W / 2, H - 1).b, full.b / 2, 1);
    int w = 0;
    SDL_RenderGetLogicalSize(canvas_.renderer(), &w, nullptr);
    EXPECT_EQ(w, 1280);
    EXPECT_EQ(SDL_GetRenderTarget(canvas_.renderer()), nullptr);
    for (float const alpha : {0.0F, -3.0F}) {
        render_help_screen(canvas_.renderer(), W, H, page_, alpha);
        EXPECT_EQ(canvas_.count(ALL, BLACK), W * H);
    }
    render_help_screen(canvas_.renderer(), W, H, page_, 7.0F);
    EXPECT_EQ(canvas_.at(W / 2, H - 1), full);
}

TEST(HelpScreen, SmallestOutputsAreDrawn) {
    for (SDL_Point const size : {SDL_Point{1, 1}, SDL_Point{1, 50}, SDL_Point{300, 2}}) {
        Canvas canvas(size.x, size.y);
        KeyboardTex page;
        render_help_screen(canvas.renderer(), W, H, page, 1.0F);
        EXPECT_EQ(page.w, size.x);
        EXPECT_EQ(page.h, size.y);
    }
}

} // namespace
