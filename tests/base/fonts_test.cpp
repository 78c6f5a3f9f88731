#include "base/fonts.h"
#include "support/files.h"

#include <SDL.h>
#include <gtest/gtest.h>

TEST(Fonts, OpenAtPhysicalSizeWithAFloor) {
    WorkingDir const here;
    lay_fonts("truetype/dejavu/DejaVuSansMono-Bold.ttf", RACE_FONTS);
    Fonts fonts;
    fonts.open_all(2.0);
    EXPECT_EQ(fonts.phys_scale, 2.0);
    int doubled = 0;
    TTF_SizeUTF8(fonts.hud_time, "0000000000", &doubled, nullptr); // mono: 0.6 of 40 pixels each
    EXPECT_NEAR(doubled, 240, 1);
    ASSERT_NE(fonts.winner, nullptr);

    fonts.open_all(0.1); // 13, 14 and 20 would come to 1 or 2
    int smallest = 0;
    int next = 0;
    TTF_SizeUTF8(fonts.hud_small, "0000000000", &smallest, nullptr);
    TTF_SizeUTF8(fonts.hud_time, "0000000000", &next, nullptr);
    EXPECT_EQ(smallest, next);
    EXPECT_GE(smallest, 30);
    fonts.close();
    EXPECT_EQ(fonts.hud_label, nullptr);
    EXPECT_EQ(fonts.winner, nullptr);
}
