#include "content_check/checks.h"
#include "content_check/report.h"
#include "render/image.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>

namespace {

constexpr double ANY = std::numeric_limits<double>::infinity();

struct WantedPicture {
    char const* file;
    int min_w;
    int min_h;
    double min_ratio; // width over height
    double max_ratio;
    bool transparent; // a cut-out: clear corners, and a solid share in the middle
};

constexpr std::array<WantedPicture, 6> WANTED_PICTURES{{
    {"art/red4.png", 200, 500, 0.499, 0.501, true},
    {"art/blue4.png", 200, 500, 0.499, 0.501, true},
    {"art/intro.png", 2560, 1440, 1.77, 1.78, false},
    // Wide enough to end above the menu's headings.
    {"art/menu_header_alpha.png", 1000, 200, 2.8, ANY, true},
    {"art/mouse2b.png", 60, 60, 0.4, 1.5, true},
    {"art/start_racing4.png", 500, 100, 2.0, 8.0, true},
}};

SDL_Color pixel_at(SDL_Surface* surface, int x, int y) {
    SDL_Color c{};
    SDL_GetRGBA(pixel_row(surface, y)[x], surface->format, &c.r, &c.g, &c.b, &c.a);
    return c;
}

bool is_solid(SDL_Color c) {
    return c.a >= 128;
}

// The share of a box's pixels for which `test` holds.
template <typename Test>
double share_of(SDL_Surface* surface, SDL_Rect const& box, Test test) {
    PixelLock const lock(surface);
    int hits = 0;
    for (int y = box.y; y < box.y + box.h; ++y) {
        for (int x = box.x; x < box.x + box.w; ++x) hits += test(pixel_at(surface, x, y)) ? 1 : 0;
    }
    return static_cast<double>(hits) / (static_cast<double>(box.w) * box.h);
}

// Share of pixels that are more than half there, and whether any such pixel lies on the border.
struct Cutout {
    double solid_share = 0.0;
    bool touches_border = false;
};

Cutout measure_cutout(SDL_Surface* surface) {
    Cutout cutout;
    PixelLock const lock(surface);
    int solid = 0;
    for (int y = 0; y < surface->h; ++y) {
        for (int x = 0; x < surface->w; ++x) {
            if (!is_solid(pixel_at(surface, x, y))) continue;
            ++solid;
            bool const border = x == 0 || y == 0 || x == surface->w - 1 || y == surface->h - 1;
            cutout.touches_border = cutout.touches_border || border;
        }
    }
    cutout.solid_share = static_cast<double>(solid) / surface->w / surface->h;
    return cutout;
}

void check_picture(Report& report, WantedPicture const& wanted) {
    SurfaceHandle const picture = load_picture(wanted.file);
    if (!picture) {
        report.add(false, wanted.file, SDL_GetError());
        return;
    }
    double const ratio = static_cast<double>(picture->w) / picture->h;
    Cutout const cutout = measure_cutout(picture.get());
    bool const ground = wanted.transparent ? cutout.solid_share > 0.15 &&
                                                 cutout.solid_share < 0.98 && !cutout.touches_border
                                           : cutout.solid_share == 1.0;
    bool const size = picture->w >= wanted.min_w && picture->h >= wanted.min_h &&
                      ratio >= wanted.min_ratio && ratio <= wanted.max_ratio;
    report.add(size && ground, wanted.file,
               std::to_string(picture->w) + " x " + std::to_string(picture->h) + ", " +
                   std::to_string(static_cast<int>(cutout.solid_share * 100.0)) + "% solid" +
                   (cutout.touches_border ? ", reaches the border" : ""));
}

// At a glance each driver has to know whose car is whose.
void check_car_colour(Report& report, char const* file, bool red) {
    SurfaceHandle const car = load_picture(file);
    if (!car) return; // told already
    double const own = share_of(car.get(), {0, 0, car->w, car->h}, [red](SDL_Color c) {
        return is_solid(c) && (red ? c.r - c.b : c.b - c.r) > 60;
    });
    double const other = share_of(car.get(), {0, 0, car->w, car->h}, [red](SDL_Color c) {
        return is_solid(c) && (red ? c.b - c.r : c.r - c.b) > 60;
    });
    report.add(own > 0.3 && other < 0.15, file, red ? "is red" : "is blue");
}

// The prompt stands in the middle, from about 0.88 to 0.96 of the height.
void check_prompt_ground(Report& report, char const* file) {
    SurfaceHandle const poster = load_picture(file);
    if (!poster) return;
    SDL_Rect const prompt{poster->w / 4, poster->h * 87 / 100, poster->w / 2, poster->h / 10};
    double const dark = share_of(poster.get(), prompt, [](SDL_Color c) {
        return 0.299 * c.r + 0.587 * c.g + 0.114 * c.b < 70.0;
    });
    report.add(dark > 0.97, file, "is dark behind the prompt");
}

// The corner that clicks has to show within a pixel or two of the pointer's 25.
void check_pointer_tip(Report& report, char const* file) {
    SurfaceHandle const pointer = load_picture(file);
    if (!pointer) return;
    PixelLock const lock(pointer.get());
    int const near_tip = pointer->h / 12;
    report.add(is_solid(pixel_at(pointer.get(), near_tip, near_tip)), file, "clicks at its corner");
}

} // namespace

void check_art(Report& report) {
    for (WantedPicture const& wanted : WANTED_PICTURES) check_picture(report, wanted);
    check_car_colour(report, "art/red4.png", true);
    check_car_colour(report, "art/blue4.png", false);
    check_prompt_ground(report, "art/intro.png");
    check_pointer_tip(report, "art/mouse2b.png");
}
