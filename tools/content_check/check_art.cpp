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
    {"art/red4.png", 200, 500, 0.4, 0.6, true},
    {"art/blue4.png", 200, 500, 0.4, 0.6, true},
    {"art/intro.png", 2560, 1440, 1.77, 1.78, false},
    // Wide enough to end above the menu's headings.
    {"art/menu_header_alpha.png", 1000, 200, 2.6, ANY, true},
    {"art/mouse2b.png", 60, 60, 0.4, 1.5, true},
    {"art/start_racing4.png", 500, 100, 2.0, 8.0, true},
}};

int alpha_at(SDL_Surface* surface, int x, int y) {
    std::array<std::uint8_t, 4> c{};
    SDL_GetRGBA(pixel_row(surface, y)[x], surface->format, &c[0], &c[1], &c[2], &c[3]);
    return c[3];
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
            if (alpha_at(surface, x, y) < 128) continue;
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

} // namespace

void check_art(Report& report) {
    for (WantedPicture const& wanted : WANTED_PICTURES) check_picture(report, wanted);
}
