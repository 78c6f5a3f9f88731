#include "track_compiler/painter.h"

#include "render/image.h"
#include "track_compiler/ground_painter.h"
#include "track_compiler/markings_painter.h"
#include "track_compiler/night_painter.h"
#include "track_compiler/picture.h"
#include "track_compiler/thing_painter.h"

namespace {

// The squares of an exercise book, printed over everything that lies flat.
Colour with_squares(Theme const& theme, Point at, Colour colour) {
    constexpr double SQUARE = 20.0; // cells
    auto const off = [](double value) { return std::fabs(std::remainder(value, SQUARE)); };
    // A thin line in a soft one: seen from afar, where pixels are skipped, the soft one remains.
    double const away = std::min(off(at.x), off(at.y));
    double const ink = (away < 0.5 ? 0.34 : 0.0) + 0.15 * smoothstep(3.6, 0.4, away);
    return mix(colour, theme.water_deep, ink * theme.paper);
}

// Six bits a channel do for the ground: its textures hide the steps, and files grow with every
// shade that they hold.
std::uint32_t pack_coarse(Colour colour) {
    return pack(colour) & 0xFFFCFCFCU;
}

void paint_ground(PaintSource const& source, Picture const& picture) {
    Land const land = measure_land(source);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            Point const at = pixel_place(x, y);
            Colour const flat = ground_colour(source, land, at);
            picture.at(x, y) = pack_coarse(with_squares(source.theme, at, flat));
        }
    }
}

} // namespace

SurfaceHandle paint_track(PaintSource const& source) {
    int const width = source.track.width * PICTURE_SCALE;
    int const height = source.track.height * PICTURE_SCALE;
    SurfaceHandle surface(SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, PIXEL_FORMAT));
    if (!surface) return surface;
    // A surface of 32-bit pixels that we made ourselves has no gaps between its rows.
    Picture const picture{{static_cast<std::uint32_t*>(surface->pixels),
                           static_cast<std::size_t>(width) * static_cast<std::size_t>(height)},
                          width,
                          height};
    paint_ground(source, picture);
    paint_skids(source, picture);
    paint_letterings(source, picture);
    paint_goal(source, picture);
    paint_shadows(source, picture);
    paint_things(source, picture);
    paint_night(source, picture);
    return surface;
}
