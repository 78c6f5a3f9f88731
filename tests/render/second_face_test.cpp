#include "render/second_face.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

// Whether two surfaces hold the same pixels.
bool same(SDL_Surface const* a, SDL_Surface const* b) {
    return a->w == b->w && a->h == b->h &&
           std::memcmp(a->pixels, b->pixels,
                       static_cast<std::size_t>(a->pitch) * static_cast<std::size_t>(a->h)) == 0;
}

} // namespace

TEST(SecondFace, LendsTheLettersThatTheFirstLacks) {
    WorkingDir const folder;
    lay_fonts("truetype/dejavu/DejaVuSans-Bold.ttf", std::array{"DejaVuSans-Bold.ttf"});
    FontHandle const first(TTF_OpenFont("/usr/share/fonts/opentype/sora/Sora-ExtraBold.otf", 36));
    ASSERT_NE(first, nullptr);
    SDL_Color const white{255, 255, 255, 255};
    int w = 0;
    for (char const* own : {"Zo\xc3\xab", "\xff\xfe", "Pixie \xf0\x9f\x98\x80"}) {
        SurfaceHandle const plain(TTF_RenderUTF8_Blended(first.get(), own, white));
        SurfaceHandle const line = render_in_faces(first.get(), own, white);
        EXPECT_TRUE(same(line.get(), plain.get())) << own;
        EXPECT_TRUE(size_in_faces(first.get(), own, &w, nullptr));
        EXPECT_EQ(w, plain->w);
    }
    for (char const* foreign : {"Ωμέγα", "Никита", "Zoë Ψ3"}) {
        SurfaceHandle const tofu(TTF_RenderUTF8_Blended(first.get(), foreign, white));
        SurfaceHandle const line = render_in_faces(first.get(), foreign, white);
        ASSERT_NE(line, nullptr);
        EXPECT_FALSE(same(line.get(), tofu.get())) << foreign;
        EXPECT_TRUE(size_in_faces(first.get(), foreign, &w, nullptr));
        EXPECT_NEAR(line->w, w, 4) << foreign;
        EXPECT_NEAR(line->h, tofu->h, 16) << foreign;
    }
    EXPECT_EQ(render_in_faces(first.get(), "", white), nullptr);
    EXPECT_EQ(render_in_faces(nullptr, "a", white), nullptr);
}
