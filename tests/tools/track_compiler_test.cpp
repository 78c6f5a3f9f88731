// What the compiler makes of a good course: a track that the game loads, and a picture that shows
// the same road.

#include "support/canvas.h"
#include "support/files.h"
#include "tools/courses.h"
#include "track_compiler/grid_writer.h"
#include "world/track_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

std::optional<Track> written_and_loaded(std::string const& text) {
    Faults faults;
    std::optional<CompiledCourse> const made = compile_text(text, faults);
    for (Fault const& fault : faults) ADD_FAILURE() << fault.line << ": " << fault.cause;
    if (!made) return std::nullopt;
    TempDir const dir;
    write_file(dir.path() / "1_x.trk", track_file_text(made->track));
    Track track;
    if (!load_track(dir.file("1_x.trk"), track)) return std::nullopt;
    EXPECT_EQ(track.cells, made->track.cells);
    EXPECT_EQ(track.start_angle, made->track.start_angle);
    return track;
}

// The small course, driven the way round that it is described and the other.
TEST(TrackCompiler, StartsPastTheLineInTheDirectionOfTravel) {
    std::string const reversed = replaced(
        replaced(small_course(), "point  100 100\npoint  700 100\npoint  700 400 width 80\n", ""),
        "point  100 400\n",
        "point  100 400\npoint  700 400 width 80\npoint  700 100\npoint  100 100\n");
    for (int const forward : {1, -1}) {
        std::optional<Track> const track = written_and_loaded(
            forward > 0 ? small_course() : replaced(reversed, "start  418", "start  382"));
        ASSERT_TRUE(track);
        EXPECT_NEAR(track->start_angle, forward > 0 ? 0.0 : std::numbers::pi, 1e-12);
        EXPECT_NEAR(track->start_x - track->goal_x1, forward * 18, 1);
        EXPECT_NEAR(track->start_y, 100, 1);
        // Just behind the line a car has the whole lap behind it.
        std::size_t const behind = track->index(track->goal_x1 - forward * 2, track->start_y);
        EXPECT_GT(track->start_distance[behind], 1000);
    }
}

// The letter of the grid that a pixel of the plain theme shows.
std::uint8_t shown(SDL_Color pixel) {
    bool const red = pixel.r > 100;
    if (red && pixel.g > 100) return 'r';
    if (red && pixel.b > 100) return 'w';
    if (red) return '.';
    return pixel.b > pixel.g ? 'b' : 'g';
}

TEST(TrackCompiler, PaintsTheRoadThatTheGridHas) {
    Faults faults;
    std::string const nameless = replaced(small_course(), "name   \"Small Course\"", "");
    std::optional<CompiledCourse> const made = compile_text(nameless, faults); // without a banner
    ASSERT_TRUE(made);
    SurfaceHandle const picture = paint_track(made->paint_source());
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->w, made->track.width * PICTURE_SCALE);
    ASSERT_EQ(picture->h, made->track.height * PICTURE_SCALE);
    // A cell that is like all its neighbours is shown as such by every pixel; at an edge the
    // picture may be finer than the grid, but never by more than a cell.
    int wrong = 0;
    for (int y = 1; y + 1 < made->track.height; ++y) {
        for (int x = 1; x + 1 < made->track.width; ++x) {
            auto const cell = made->track.cells[made->track.index(x, y)];
            bool inner = std::abs(x - made->track.goal_x1) > 50; // flags, boxes and chequers
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -1; dx <= 1; ++dx) {
                    inner = inner && made->track.cells[made->track.index(x + dx, y + dy)] == cell;
                }
            }
            if (!inner) continue;
            for (int i = 0; i < PICTURE_SCALE * PICTURE_SCALE; ++i) {
                SDL_Color const pixel = surface_pixel(picture.get(), x * PICTURE_SCALE + i % 2,
                                                      y * PICTURE_SCALE + i / 2);
                wrong += shown(pixel) == cell ? 0 : 1;
            }
        }
    }
    EXPECT_EQ(wrong, 0);
    auto const is_kerb = [](std::uint8_t cell) { return cell == 'r' || cell == 'w'; };
    EXPECT_GT(std::count_if(made->track.cells.begin(), made->track.cells.end(), is_kerb), 1000);
}

// The text between the fences of the page's first example that begins with `word`.
std::string example(std::string const& page, std::string const& word) {
    std::size_t const begin = page.find("```\n   " + word);
    EXPECT_NE(begin, std::string::npos) << word;
    if (begin == std::string::npos) return {};
    return page.substr(begin + 4, page.find("```", begin + 4) - begin - 4);
}

TEST(TrackCompiler, CompilesTheCourseThatTheManualTeaches) {
    std::string const page =
        read_file(std::string(BRINDLE_COURSES) + "/../../docs/making-a-track.md");
    Faults faults;
    EXPECT_TRUE(compile_text(example(page, "name") + example(page, "area"), faults));
    for (Fault const& fault : faults) ADD_FAILURE() << fault.line << ": " << fault.cause;
}

} // namespace
