#include "render/colors.h"
#include "render/scene.h"
#include "render/track_view.h"
#include "support/canvas.h"

#include <array>

namespace {

constexpr SDL_Color ROAD = {60, 60, 64, 255};
constexpr SDL_Color GRASS = {30, 100, 40, 255};
constexpr SDL_Color LINE = {240, 240, 240, 255};
constexpr SDL_Color CHECKER = {20, 20, 20, 255};
constexpr SDL_Color RED_CAR = {220, 0, 0, 255};
constexpr SDL_Color BLUE_CAR = {0, 0, 220, 255};

// The raster drawing of `track`, on a canvas of its own size.
void draw_raster(Canvas const& canvas, Track const& track) {
    int w = 0;
    int h = 0;
    TextureHandle const texture = render_build_track_texture(canvas.renderer(), track, &w, &h);
    ASSERT_TRUE(texture);
    ASSERT_EQ(h, track.height * PIXELS_PER_CELL);
    SDL_Rect const all = {0, 0, w, h};
    SDL_RenderCopy(canvas.renderer(), texture.get(), nullptr, &all);
}

PlayerView view_of(SDL_Rect viewport, SDL_Color body) {
    PlayerView view;
    view.viewport = viewport;
    view.body_color = body;
    view.accent_color = body;
    return view;
}

} // namespace

TEST(TrackView, ChoosesTheCellSizeByTrackAndRenderer) {
    Canvas const canvas(10, 10); // tells no texture limit: 4096 counts
    EXPECT_EQ(pixels_per_cell_for(road(100, 100), canvas.renderer()), 18);
    EXPECT_EQ(pixels_per_cell_for(road(300, 300), canvas.renderer()), 13);
    EXPECT_EQ(pixels_per_cell_for(road(321, 100), canvas.renderer()), 12);
    EXPECT_EQ(pixels_per_cell_for(road(321, 321), canvas.renderer()), 2);
    EXPECT_EQ(pixels_per_cell_for(road(5000, 400), canvas.renderer()), 1);
}

TEST(TrackView, LowestZoomShowsTheWholeTrack) {
    Track const track = road(120, 72); // 2160 x 1296 pixels
    EXPECT_EQ(zoom_min(track, 640), -8);
    EXPECT_EQ(zoom_min(track, 1280), -4);
    EXPECT_EQ(zoom_min(road(10, 10), 640), 0); // it fits as it is
}

TEST(TrackView, EachCellHasItsColour) {
    PIXELS_PER_CELL = 1;
    Canvas const canvas(1, 2);
    constexpr std::array<SDL_Color, 8> COLORS{{ROAD,
                                               ROAD,
                                               GRASS,
                                               LINE,
                                               {230, 230, 230, 255},
                                               {170, 170, 210, 255},
                                               {200, 40, 40, 255},
                                               {255, 0, 255, 255}}};
    for (std::size_t i = 0; i < COLORS.size(); ++i) {
        draw_raster(canvas, track_of({".", std::string(1, ".*g!wbr?"[i])}));
        EXPECT_EQ(canvas.count({0, 1, 1, 1}, COLORS[i]), 1) << i;
    }
}

TEST(TrackView, CheckersTheGoalLine) {
    Track track = track_of({"...", ".!.", ".!!"});
    track.goal_x1 = track.goal_x2 = 1;
    track.goal_y1 = 5; // ends beyond the grid, and the wrong way round
    Canvas const canvas(54, 54);
    draw_raster(canvas, track); // squares of 6 pixels, three to a cell
    EXPECT_EQ(canvas.count({18, 18, 6, 6}, CHECKER), 36);
    EXPECT_EQ(canvas.count({18, 18, 18, 18}, CHECKER), 5 * 36);
    EXPECT_EQ(canvas.count({18, 18, 18, 18}, LINE), 4 * 36);
    EXPECT_EQ(canvas.count({18, 0, 18, 18}, ROAD), 18 * 18) << "only ! is checkered";
    EXPECT_EQ(canvas.count({36, 36, 18, 18}, LINE), 18 * 18) << "beside the line's span";
    PIXELS_PER_CELL = 5; // squares of one pixel
    draw_raster(canvas, track);
    EXPECT_EQ(canvas.count({5, 5, 5, 5}, CHECKER), 13);
    PIXELS_PER_CELL = 7; // squares of 2: the last ones reach into the next cell
    draw_raster(canvas, track);
    EXPECT_EQ(canvas.count({14, 7, 1, 7}, CHECKER), 3);
}

TEST(TrackView, CheckersEveryCellOfALongGoalLineAlike) {
    std::vector<std::string> rows(40, ".!.");
    rows.front() = rows.back() = "...";
    Track track = track_of(rows);
    track.goal_x1 = track.goal_x2 = 1;
    track.goal_y1 = 1;
    track.goal_y2 = 38;
    PIXELS_PER_CELL = 7;
    Canvas const canvas(21, 280);
    draw_raster(canvas, track);
    for (int row = 2; row < 39; ++row) { // each with what its neighbour above reaches into it
        EXPECT_EQ(canvas.count({7, row * 7, 7, 7}, CHECKER), 28) << row;
    }
    EXPECT_EQ(canvas.count({7, 39 * 7, 7, 1}, CHECKER), 3);
}

TEST(TrackView, SmallTrackIsCentredBetweenBarsWhileTheOtherAxisScrolls) {
    PIXELS_PER_CELL = 10;
    std::vector<std::string> rows(20, "....");
    rows[12] = "gggg";
    Track const track = track_of(rows); // 40 x 200 pixels
    Canvas canvas(100, 60);
    canvas.clear({1, 2, 3, 255});
    int w = 0;
    int h = 0;
    TextureHandle const texture = render_build_track_texture(canvas.renderer(), track, &w, &h);
    PlayerView view = view_of({5, 0, 81, 60}, RED_CAR);
    view.car_alpha = 0; // only the track
    view.cam_ready = true;
    view.cam_x = 3; // without influence
    auto const draw_at = [&](double cam_y) {
        view.cam_y = cam_y;
        render_viewport(canvas.renderer(), texture.get(), w, h, track, view, {}, {}, {}, nullptr);
    };
    draw_at(10);
    EXPECT_EQ(canvas.count({5, 0, 20, 60}, BLACK), 20 * 60);
    EXPECT_EQ(canvas.count({65, 0, 21, 60}, BLACK), 21 * 60);
    EXPECT_EQ(canvas.count({0, 0, 5, 60}, {1, 2, 3, 255}), 5 * 60);
    EXPECT_EQ(canvas.count({25, 50, 40, 10}, GRASS), 400); // row 12 at 120 - (100 - 30)
    EXPECT_EQ(canvas.count({25, 0, 40, 50}, ROAD), 40 * 50);

    draw_at(1000); // held at the track's end: row 12 at 120 - (200 - 60)
    EXPECT_EQ(canvas.count({25, 0, 40, 60}, ROAD), 40 * 60);
}

TEST(TrackView, DrawsWhoIsInTheViewInOrder) {
    PIXELS_PER_CELL = 10;
    Track const track = road(20, 10);
    Canvas canvas(200, 100);
    PlayerView view = view_of({0, 0, 100, 100}, RED_CAR);
    view.accent_color = {200, 200, 0, 255};
    PlayerView other = view_of({100, 0, 100, 100}, BLUE_CAR);
    CarState const own = car_at(2, 3);
    CarState const theirs = car_at(6, 3);
    CarState const ghost = car_at(2, 8);
    other.skid_points = {{2, 6, 0, SDL_GetTicks()}, {2.5, 6, 0, SDL_GetTicks()}};
    auto const draw = [&] {
        canvas.clear(ROAD);
        render_viewport(canvas.renderer(), nullptr, 200, 100, track, view, own, other, theirs,
                        &ghost);
    };

    draw(); // the car's position stands in for a camera that is not placed yet; no picture
    EXPECT_EQ(canvas.at(10, 30).r, RED_CAR.r);
    EXPECT_EQ(canvas.at(50, 30).b, BLUE_CAR.b);
    SDL_Color const faint = canvas.at(10, 80);
    EXPECT_GT(faint.r, ROAD.r);
    EXPECT_LT(faint.r, RED_CAR.r) << "the ghost is half transparent";
    EXPECT_LT(canvas.at(22, 54).r, ROAD.r) << "the other car's marks show in this view, too";
    EXPECT_EQ(SDL_RenderIsClipEnabled(canvas.renderer()), SDL_FALSE);

    other.viewport = {}; // alone
    draw();
    EXPECT_EQ(canvas.count({40, 20, 20, 20}, ROAD), 400);
    EXPECT_EQ(canvas.count({18, 40, 12, 30}, ROAD), 12 * 30);
}
