// The report as a reader sees it: files on disk in, PDF out, judged by qpdf and poppler.

#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/highscore_report.h"
#include "records/printed.h"
#include "support/canvas.h"
#include "support/child.h"
#include "support/files.h"
#include "support/records.h"
#include "support/said.h"

#include <SDL_image.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <numbers>
#include <regex>

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string printed_by(std::string const& command) {
    ChildResult const child = run_child([&command] {
        if (std::system(command.c_str()) != 0) std::puts("[failed]"); // NOLINT(cert-env33-c)
    });
    return child.out + child.err;
}

// A folder to run in, with tracks to lay down, and a table of records of its own.
struct Report : RecordsTest {
    static void lay_track(std::string const& name, int w = 0, int h = 0) {
        fs::create_directory("tracks");
        write_file("tracks/" + name + ".trk", "80 60\n....\n");
        if (w == 0) return;
        SurfaceHandle const picture = make_surface(w, h, {40, 120, 60, 255});
        ASSERT_EQ(IMG_SavePNG(picture.get(), ("tracks/" + name + ".png").c_str()), 0);
    }

    // A round of the grid of 80 x 60 cells.
    static void lay_ghost(std::string const& file) {
        std::vector<CarState> lap(4000);
        for (std::size_t i = 0; i < lap.size(); ++i) {
            double const turn = static_cast<double>(i) / 4000.0 * 2.0 * std::numbers::pi;
            lap[i].x = 40.0 + 30.0 * std::cos(turn);
            lap[i].y = 30.0 + 20.0 * std::sin(turn);
        }
        ASSERT_TRUE(save_ghost_trace(pref_path(file.c_str()), lap, 10));
    }

    static std::string write_report(std::string const& name, bool expected = true) {
        std::string err;
        std::string const out = output_of([&] {
            err = errors_of([&] { EXPECT_EQ(write_highscore_pdf(name, "out.pdf"), expected); });
        });
        return out + err;
    }

    static void expect_valid() {
        EXPECT_THAT(printed_by("qpdf --check out.pdf"), HasSubstr("No syntax or stream encoding"));
    }

    static std::string text(int page) {
        return printed_by("pdftotext -layout -f " + std::to_string(page) + " -l " +
                          std::to_string(page) + " out.pdf -");
    }

    // The page as poppler draws it, at one pixel a point.
    static SurfaceHandle draw(int page) {
        printed_by("pdftoppm -r 72 -png -singlefile -f " + std::to_string(page) + " out.pdf page");
        SurfaceHandle const drawn(IMG_Load("page.png"));
        return SurfaceHandle(SDL_ConvertSurfaceFormat(drawn.get(), SDL_PIXELFORMAT_ABGR8888, 0));
    }

    WorkingDir const here;
};

std::ptrdiff_t count_red(SurfaceHandle const& page, SDL_Rect const& area) {
    std::vector<SDL_Color> const pixels = surface_pixels(page.get(), area);
    return std::count_if(pixels.begin(), pixels.end(),
                         [](SDL_Color c) { return c.r > 180 && c.g < 80 && c.b < 80; });
}

// How many pixels along a line of text, `y` points from the page's foot, are darker than `level`.
std::ptrdiff_t count_ink(SurfaceHandle const& page, int y, int to_x, int level) {
    std::vector<SDL_Color> const line = surface_pixels(page.get(), {100, 842 - y, to_x - 100, 1});
    return std::count_if(line.begin(), line.end(), [level](SDL_Color c) { return c.r < level; });
}

} // namespace

TEST_F(Report, PrintsOneTrackAtTheTopLeft) {
    lay_track("3_old_harbour", 400, 300);
    lay_ghost("ann.trace");
    write_file(pref_path("best_lap_times.txt"), "[Ann]\n3: 41.25 ann.trace\n0: 1\n12: 2\n");
    EXPECT_EQ(write_report("Ann"), "Wrote out.pdf (1 track) for \"Ann\"\n");
    expect_valid();
    std::string const words = text(1);
    EXPECT_THAT(words, HasSubstr("Ann \u2014 Brindle Run High Scores"));
    EXPECT_THAT(words, testing::ContainsRegex("best lap times  ?20[0-9]{2}-[01][0-9]-[0-3][0-9]"));
    EXPECT_THAT(printed_by("pdfinfo out.pdf"), HasSubstr("595 x 842 pts (A4)"));

    // 400 x 300 is limited by the height: 200 x 150, centred at 162.75, its top at 842 - 738.
    SurfaceHandle const page = draw(1);
    ASSERT_NE(page, nullptr);
    SDL_Color const grass = surface_pixel(page.get(), 70, 110);
    EXPECT_NEAR(grass.g, 120, 6);
    EXPECT_EQ(surface_pixel(page.get(), 60, 110).g, 255);
    EXPECT_EQ(surface_pixel(page.get(), 70, 100).g, 255);
    // The lap's rightmost point: cell (70, 30), 175 by 75 points into the picture.
    EXPECT_GT(count_red(page, {235, 170, 6, 18}), 15);
    EXPECT_EQ(count_red(page, {100, 160, 120, 40}), 0) << "inside the round";
    EXPECT_EQ(count_red(page, {0, 300, 595, 542}), 0);
}

TEST_F(Report, FillsPagesBySix) {
    std::string table = "[Ann]\n";
    for (int slot = 1; slot <= 9; ++slot) {
        lay_track(std::to_string(slot) + "_course_" + std::to_string(slot), 200,
                  slot < 5 ? 80 : 300);
        table += printed("%d: %d.5 ann.trace\n", slot, 30 + slot);
        if (slot != 6 && slot != 7 && slot != 9) continue;
        write_file(pref_path("best_lap_times.txt"), table);
        lay_ghost("ann.trace");
        EXPECT_THAT(write_report("Ann"), HasSubstr(printed("(%d tracks)", slot)));
        expect_valid();
        EXPECT_THAT(printed_by("pdfinfo out.pdf"),
                    testing::ContainsRegex(slot == 6 ? "Pages: +1\n" : "Pages: +2\n"));
    }
    std::string const second = text(2);
    EXPECT_THAT(second, HasSubstr("Ann \u2014 Brindle Run High Scores"));
    EXPECT_THAT(second, Not(HasSubstr("course 6")));
    std::size_t const seventh = second.find("course 7");
    std::size_t const eighth = second.find("course 8");
    EXPECT_LT(seventh, eighth);
    EXPECT_EQ(second.substr(seventh, eighth - seventh).find('\n'), std::string::npos) << "a row";
    EXPECT_LT(second.find("37.500 s"), second.find("course 9"));
}

TEST_F(Report, PrintsNamesAsTheyAreAndNeedsNoTrackFolder) {
    write_file(pref_path("best_lap_times.txt"), "[A (b\\) \xc3\xb6]\n2: 9\n3: 10\n[Empty]\n");
    EXPECT_EQ(write_report("A (b\\) \xc3\xb6"),
              "Wrote out.pdf (2 tracks) for \"A (b\\) \xc3\xb6\"\n");
    expect_valid();
    std::string const words = text(1);
    EXPECT_THAT(words, HasSubstr("A (b\\) \u00c3\u00b6 \u2014 Brindle")) << "in single bytes";
    EXPECT_THAT(words, testing::ContainsRegex("Track 2 +Track 3"));
    EXPECT_THAT(words, HasSubstr("(no preview)"));
    EXPECT_THAT(words, HasSubstr("9.000 s"));
}

TEST_F(Report, ShowsGreekAndCyrillicInAFaceOfItsOwn) {
    std::string const name = "Ζωή Ёжик";
    write_file(pref_path("best_lap_times.txt"), "[" + name + "]\n1: 9\n2: 8\n");
    lay_track("2_Пример_α");
    lay_fonts("truetype/dejavu/DejaVuSans-Bold.ttf", std::array{"DejaVuSans-Bold.ttf"});
    std::string const face = read_file("art/fonts/DejaVuSans-Bold.ttf");
    EXPECT_THAT(write_report(name), HasSubstr("Wrote out.pdf"));
    expect_valid();
    EXPECT_THAT(text(1), HasSubstr(name + " — Brindle Run High Scores"));
    EXPECT_THAT(text(1), testing::ContainsRegex("Track 1 +Пример α"));
    EXPECT_THAT(printed_by("pdffonts out.pdf"),
                testing::ContainsRegex("CID TrueType +Identity-H +yes yes yes"));
    EXPECT_LT(fs::file_size("out.pdf"), 60'000U) << "a part of the face";
    // A line through the heading, and one through the dots of the letter Yo, which is put together
    // from parts.
    SurfaceHandle const page = draw(1);
    EXPECT_GT(count_ink(page, 797, 500, 128), 60);
    EXPECT_LT(count_ink(page, 797, 500, 128), 300);
    EXPECT_GT(count_ink(page, 809, 300, 200), 2);
    // A damaged face shows what it can, and the document stays one.
    fs::remove("art/fonts/DejaVuSans-Bold.ttf");
    for (std::size_t cut : {0UL, 100UL, 20'000UL, 300'000UL, 600'000UL}) {
        write_file("art/fonts/DejaVuSans-Bold.ttf", face.substr(0, cut));
        EXPECT_THAT(write_report(name), HasSubstr("Wrote out.pdf"));
        expect_valid();
    }
}

TEST_F(Report, SaysWhyThereIsNone) {
    write_file(pref_path("best_lap_times.txt"), "[Ann]\n1: 4\n[Bob]\n0: 4\n10: 5\n-1: 2\n");
    EXPECT_EQ(write_report("ann", false), "highscore-pdf: no recorded times for player \"ann\"\n");
    EXPECT_EQ(write_report("Bob", false), "highscore-pdf: nothing to print for \"Bob\"\n");
}

TEST_F(Report, GoesWithoutDamagedFiles) {
    lay_track("1_no_picture");
    for (char const* name :
         {"2_cut", "3_noise", "4_absurd", "5_short_ghost", "6_wild_ghost", "7_no_grid"}) {
        lay_track(name, 300, 200);
    }
    fs::resize_file("tracks/2_cut.png", 90);
    write_file("tracks/3_noise.png", std::string(5000, '\xa5'));
    write_file("tracks/4_absurd.png", "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\xea\x60\0\0\xea\x60"s +
                                          "\x08\x06\0\0\0\0\0\0\0\0"s);
    write_file("tracks/7_no_grid.trk", "80 0\n");
    lay_ghost("whole");
    lay_ghost("short");
    fs::resize_file(pref_path("short"), 8 + 56 * 1000 + 5);
    std::string wild(8 + 56 * 500, '\x7f');
    wild.replace(0, 8, "\x0a\0\0\0\0\x01\0\0"s);
    write_file(pref_path("wild"), wild);
    write_file(pref_path("best_lap_times.txt"),
               "[Ann]\n1: 1 whole\n2: 2 whole\n3: 3 whole\n4: 4 whole\n5: 5 short\n6: 6 wild\n"
               "7: 7 whole\n8: inf missing\n9: 1e300\n");
    EXPECT_THAT(write_report("Ann"), HasSubstr("Wrote out.pdf (9 tracks) for \"Ann\"\n"));
    expect_valid();
    std::string const words = text(1) + text(2);
    std::regex const missing("\\(no preview\\)");
    EXPECT_EQ(std::distance(std::sregex_iterator(words.begin(), words.end(), missing), {}), 6);
    EXPECT_THAT(words, HasSubstr("inf s"));

    // Card 5, at the left of the third row: a quarter of the round, its lower right. The picture is
    // 225 x 150 at (50.25, 524).
    SurfaceHandle const page = draw(1);
    ASSERT_NE(page, nullptr);
    EXPECT_GT(count_red(page, {163, 599, 113, 75}), 100);
    EXPECT_EQ(count_red(page, {50, 524, 110, 150}), 0);
    EXPECT_EQ(count_red(page, {310, 500, 285, 342}), 0) << "no line from a wild ghost";
}
