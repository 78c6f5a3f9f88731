#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <string>

namespace {

constexpr char const* required[] = {
    "Montserrat-Black.otf",    "Montserrat-SemiBold.otf", "Montserrat-SemiBoldItalic.otf",
    "LiberationMono-Bold.ttf", "RocketBrush-DYwyW.otf",   "StarJediOutline-y0xm.ttf",
    "Quango-xlVR.otf",
};

// Marks of the menu, and letters that players' names bring along.
constexpr char32_t beyond_ascii[] = U"»—éèñøüßåçÄÖÉ";

class Fonts : public ::testing::TestWithParam<char const*> {
protected:
    void SetUp() override { ASSERT_EQ(TTF_Init(), 0) << TTF_GetError(); }
    void TearDown() override { TTF_Quit(); }
};

std::string missing_glyphs(TTF_Font* font) {
    std::string missing;
    auto const look = [&](char32_t glyph) {
        if (TTF_GlyphIsProvided32(font, glyph) == 0) {
            missing += "U+" + std::to_string(static_cast<unsigned>(glyph)) + ' ';
        }
    };
    for (char32_t glyph = U' '; glyph <= U'~'; ++glyph) {
        look(glyph);
    }
    for (char32_t const glyph : beyond_ascii) {
        if (glyph != U'\0') {
            look(glyph);
        }
    }
    return missing;
}

TEST_P(Fonts, HoldEveryGlyphThatTheGameShows) {
    std::string const path = std::string{BRINDLE_GAME_DIR "/art/fonts/"} + GetParam();
    TTF_Font* const font = TTF_OpenFont(path.c_str(), 18);
    ASSERT_NE(font, nullptr) << TTF_GetError();
    EXPECT_EQ(missing_glyphs(font), "");
    // A face with a huge line height would push the menu's rows apart.
    EXPECT_LE(TTF_FontHeight(font), 18 * 3 / 2 + 1);
    TTF_CloseFont(font);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Fonts, ::testing::ValuesIn(required));

} // namespace
