#include "render/image.h"
#include "screens/edge_points.h"
#include "screens/track_thumb.h"
#include "support/canvas.h"
#include "support/child.h"
#include "support/files.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

constexpr SDL_Color RED{255, 0, 0, 255};
constexpr SDL_Color GREEN{0, 255, 0, 255};

void save_picture(fs::path const& path, int w, int h, SDL_Color fill) {
    ASSERT_EQ(IMG_SavePNG(make_surface(w, h, fill).get(), path.c_str()), 0);
}

// A game folder of its own as the working directory.
struct Thumbs : testing::Test {
    Thumbs() { fs::create_directory("tracks"); }

    bool load(int height, double scale = 1.0) {
        return load_track_thumb(canvas_.renderer(), "tracks/1_a.png", height, scale, tex_, &w_,
                                &h_);
    }
    // The colour in the middle of the loaded picture as it is drawn.
    SDL_Color shown() {
        SDL_RenderCopy(canvas_.renderer(), tex_.get(), nullptr, nullptr);
        return canvas_.at(8, 8);
    }
    int cached_height() {
        SurfaceHandle const cached(IMG_Load(".cache/thumbs/1_a.png"));
        return cached ? cached->h : 0;
    }

    WorkingDir folder_;
    Canvas canvas_{16, 16};
    TextureHandle tex_;
    int w_ = 0;
    int h_ = 0;
};

} // namespace

TEST_F(Thumbs, ReduceOnceAndThenComeFromTheCache) {
    save_picture("tracks/1_a.png", 80, 40, RED);
    ASSERT_TRUE(load(20, 2.0));
    EXPECT_EQ(w_, 20);
    EXPECT_EQ(h_, 10);
    EXPECT_EQ(cached_height(), 20);
    // A cache as new as the source is taken for it, whatever it holds.
    save_picture(".cache/thumbs/1_a.png", 40, 20, GREEN);
    fs::last_write_time(".cache/thumbs/1_a.png", fs::last_write_time("tracks/1_a.png"));
    ASSERT_TRUE(load(20));
    EXPECT_EQ(shown().g, 255);
}

TEST_F(Thumbs, ComeWithThePictureForCommonHeights) {
    save_picture("real.png", 80, 40, RED);
    fs::create_directories("game/tracks");
    fs::create_directories("game/thumbs/20");
    fs::rename("real.png", "game/tracks/1_real.png");
    fs::create_symlink("../game/tracks/1_real.png",
                       "tracks/1_a.png"); // as in a player's own folder
    ASSERT_TRUE(save_track_thumb("tracks/1_a.png", 20, "made.png"));
    EXPECT_FALSE(save_track_thumb("tracks/1_a.png", 41, "higher.png"));
    ASSERT_TRUE(load(20));
    EXPECT_EQ(read_file("made.png"), read_file(".cache/thumbs/1_a.png"));
    fs::remove_all(".cache");
    save_picture("game/thumbs/20/1_real.png", 40, 20, GREEN);
    for (int visit = 0; visit < 2; ++visit) {
        ASSERT_TRUE(load(20));
        EXPECT_EQ(shown().g, 255);
        EXPECT_EQ(cached_height(), 20);
        fs::remove_all("game/thumbs"); // the second time it comes from the cache
    }
    ASSERT_TRUE(load(30));
    EXPECT_LT(shown().g, 50) << "none of that height";
    fs::create_directories("game/thumbs/20");
    save_picture("game/thumbs/20/1_real.png", 40, 20, GREEN);
    fs::last_write_time("game/tracks/1_real.png",
                        fs::last_write_time("game/thumbs/20/1_real.png") + std::chrono::seconds(5));
    ASSERT_TRUE(load(20));
    EXPECT_LT(shown().g, 50) << "a newer picture";
}

TEST_F(Thumbs, AreMadeAnewWhenTheCacheIsStaleBrokenOrOfAnotherHeight) {
    save_picture("tracks/1_a.png", 80, 40, RED);
    fs::create_directories(".cache/thumbs");
    save_picture(".cache/thumbs/1_a.png", 40, 20, GREEN);
    fs::last_write_time(".cache/thumbs/1_a.png",
                        fs::last_write_time("tracks/1_a.png") - std::chrono::seconds(5));
    ASSERT_TRUE(load(20));
    EXPECT_EQ(shown().r, 255);
    ASSERT_TRUE(load(30));
    EXPECT_EQ(w_, 60);
    EXPECT_EQ(cached_height(), 30);
    write_file(".cache/thumbs/1_a.png", "no picture");
    ASSERT_TRUE(load(30));
    EXPECT_EQ(cached_height(), 30);
    // A head that claims 9,000 x 9,000 pixels: 324 MB if they were decoded.
    std::string const huge =
        "\211PNG\r\n\032\n"
        "\000\000\000\015IHDR\000\000\043\050\000\000\043\050\010\006\000\000\000\155\325\162\272"
        "\000\000\000\014IDAT\170\234\143\140\240\075\000\000\000\144\000\001\206\144\074\065"s;
    write_file(".cache/thumbs/1_a.png", huge);
    ChildResult const child = run_child([this] { load(30); });
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(cached_height(), 30);
    EXPECT_LT(child.memory_kb - run_child([] {}).memory_kb, 100'000);
}

TEST_F(Thumbs, AreNeverEnlargedAndNeedNoCache) {
    save_picture("tracks/1_a.png", 30, 10, RED);
    write_file(".cache", "a file where the folder should be");
    ASSERT_TRUE(load(20));
    EXPECT_EQ(w_, 30);
    EXPECT_EQ(h_, 10);
    fs::remove("tracks/1_a.png");
    EXPECT_FALSE(load(20));
    EXPECT_EQ(tex_, nullptr);
    EXPECT_EQ(w_, 0);
}

TEST_F(Thumbs, AreFoundBesideTrackFilesOnly) {
    for (char const* name : {"0_a.trk", "0_a.png", "1_a.trk", "1_a.png", "2_alone.trk",
                             "3_alone.png", "4_a.trk", "4_b.trk", "4_b.png"}) {
        write_file(std::string("tracks/") + name, "");
    }
    auto const found = discover_track_pngs();
    EXPECT_EQ(found[1], "tracks/1_a.png");
    EXPECT_EQ(found[4], "tracks/4_b.png");
    for (std::size_t slot : {0U, 2U, 3U, 5U}) EXPECT_EQ(found[slot], "") << slot;
}

TEST(EdgePoints, LieJustInsideTheRimOfABrightShape) {
    SurfaceHandle const picture = make_surface(60, 60, {});
    SDL_Rect const square{10, 10, 40, 40};
    SDL_FillRect(picture.get(), &square, 0xFFFFFFFF);
    auto const points = build_edge_points(picture.get());
    // Three rings of the square: from 1 to 3 pixels inside its edge.
    EXPECT_EQ(points.size(), 38U * 38U - 32U * 32U);
    EXPECT_EQ(points.front().x, 11);
    EXPECT_EQ(points.front().y, 11);
    for (SDL_Point const& p : points) {
        int const depth = std::min({p.x - 10, p.y - 10, 49 - p.x, 49 - p.y});
        EXPECT_TRUE(depth >= 1 && depth <= 3) << p.x << ' ' << p.y;
    }
}

TEST(EdgePoints, AvoidThinStrokesSpecksAndDimParts) {
    SurfaceHandle const picture = make_surface(60, 60, {89, 89, 89, 255});
    EXPECT_TRUE(build_edge_points(picture.get()).empty()) << "dim";
    SDL_Rect const stroke{0, 30, 60, 2};
    SDL_FillRect(picture.get(), &stroke, 0xFFFFFFFF);
    SDL_Rect const speck{20, 5, 10, 10};
    SDL_FillRect(picture.get(), &speck, 0xFFFFFFFF);
    EXPECT_TRUE(build_edge_points(picture.get()).empty());
    EXPECT_TRUE(build_edge_points(nullptr).empty());
}
