#include "track_compiler/painter.h"

#include "render/image.h"
#include "track_compiler/noise.h"
#include "track_compiler/scenery.h"
#include "track_compiler/stencil.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>

namespace {

Colour mix(Colour a, Colour b, double t) {
    auto const f = static_cast<float>(std::clamp(t, 0.0, 1.0));
    return {a.r + (b.r - a.r) * f, a.g + (b.g - a.g) * f, a.b + (b.b - a.b) * f};
}

Colour shade(Colour a, double factor) {
    auto const f = static_cast<float>(factor);
    return {a.r * f, a.g * f, a.b * f};
}

std::uint32_t pack(Colour colour) {
    auto const channel = [](float value) {
        return static_cast<std::uint32_t>(std::clamp(value, 0.0F, 1.0F) * 255.0F + 0.5F);
    };
    return 0xFF000000U | channel(colour.b) << 16U | channel(colour.g) << 8U | channel(colour.r);
}

Colour unpack(std::uint32_t pixel) {
    auto const channel = [&](unsigned shift) {
        return static_cast<float>((pixel >> shift) & 0xFFU) / 255.0F;
    };
    return {channel(0), channel(8), channel(16)};
}

// Clouds for what is seen from afar, single noise for what is only texture: it is four times
// cheaper, and there are millions of pixels.
double clouds(Point at, double size, std::uint32_t seed) {
    return static_cast<double>(
        cloud_noise(static_cast<float>(at.x / size), static_cast<float>(at.y / size), seed));
}
double speckle(Point at, double size, std::uint32_t seed) {
    return static_cast<double>(
        value_noise(static_cast<float>(at.x / size), static_cast<float>(at.y / size), seed));
}

Colour area_colour(Theme const& theme, GroundKind kind) {
    switch (kind) {
    case GroundKind::water:
        return theme.water_deep;
    case GroundKind::sand:
        return theme.sand;
    case GroundKind::gravel:
        return theme.gravel;
    case GroundKind::field:
        return theme.field;
    case GroundKind::plaza:
        return theme.plaza;
    case GroundKind::ice:
        return theme.ice;
    case GroundKind::woods:
        return theme.woods;
    case GroundKind::rocks:
        return theme.rocks;
    }
    return theme.ground_light;
}

// The patch of other ground that a place lies on, the last one that covers it; null for none.
GroundArea const* area_at(Course const& course, Point at) {
    GroundArea const* found = nullptr;
    for (GroundArea const& area : course.areas) {
        if (inside(area, at)) found = &area;
    }
    return found;
}

// Distance to the patch's outline, for its shore.
double shore_distance(GroundArea const& area, Point at) {
    double nearest = 1e9;
    for (std::size_t i = 0, j = area.corners.size() - 1; i < area.corners.size(); j = i++) {
        Point const leg = area.corners[i] - area.corners[j];
        Point const offset = at - area.corners[j];
        double const t = std::clamp(dot(offset, leg) / std::max(dot(leg, leg), 1e-9), 0.0, 1.0);
        nearest = std::min(nearest, length(offset - t * leg));
    }
    return nearest;
}

// From the beach through the shallows into the deep, with an uneven edge.
Colour water_colour(Theme const& theme, GroundArea const& area, Point at) {
    double const depth = shore_distance(area, at) + 16.0 * (speckle(at, 30.0, 8) - 0.5);
    Colour const deep = mix(theme.water_shallow, theme.water_deep,
                            smoothstep(10.0, 90.0, depth + 30.0 * speckle(at, 60.0, 9)));
    double const foam = smoothstep(3.0, 5.0, depth) - smoothstep(6.0, 9.0, depth);
    Colour const wet = mix(deep, Colour{1.0F, 1.0F, 1.0F}, 0.5 * foam);
    return mix(theme.shore, wet, smoothstep(2.0, 5.0, depth));
}

Colour land_colour(PaintSource const& source, Point at, double edge) {
    Theme const& theme = source.theme;
    GroundArea const* const area = area_at(source.course, at);
    Colour colour = mix(theme.ground_dark, theme.ground_light, clouds(at, 70.0, 1));
    if (area != nullptr && area->kind == GroundKind::water) {
        colour = water_colour(theme, *area, at);
    } else if (area != nullptr) {
        double const in = shore_distance(*area, at) + 14.0 * (speckle(at, 14.0, 10) - 0.5);
        double const tone = 0.9 + 0.2 * clouds(at, 40.0, 1);
        colour = mix(colour, shade(area_colour(theme, area->kind), tone), smoothstep(0.0, 8.0, in));
    }
    if (edge < 40.0) {
        double const away = edge + 20.0 * speckle(at, 20.0, 2);
        colour = mix(theme.verge, colour, smoothstep(8.0, 40.0, away));
    }
    return shade(colour, 1.0 + 0.3 * theme.grain * (speckle(at, 1.2, 3) - 0.5));
}

Colour road_colour(PaintSource const& source, Point at, RoadPlace const& place) {
    Theme const& theme = source.theme;
    double const racing = source.racing[source.line.index_at(place.along)];
    double const off = std::fabs(place.lateral - racing);
    double const worn = 0.8 * (1.0 - smoothstep(4.0, 26.0, off + 8.0 * speckle(at, 40.0, 4)));
    Colour colour = mix(theme.road, theme.road_worn, worn);
    double const away = -place.edge + 8.0 * (speckle(at, 12.0, 5) - 0.5);
    colour = mix(colour, theme.road_edge, 0.7 * (1.0 - smoothstep(0.0, 12.0, away)));
    return shade(colour, 1.0 + 0.25 * theme.road_grain * (speckle(at, 0.9, 6) - 0.5));
}

Colour ground_colour(PaintSource const& source, Point at) {
    Theme const& theme = source.theme;
    RoadPlace const place = road_at(source.field, at);
    switch (surface_at(source.line, place, theme.rim_width)) {
    case Surface::road:
        return road_colour(source, at, place);
    case Surface::kerb_red:
        return theme.kerb_red;
    case Surface::kerb_white:
        return theme.kerb_white;
    case Surface::rim:
        return mix(theme.rim_dark, theme.rim_light, speckle(at, 5.0, 7));
    case Surface::land:
        return land_colour(source, at, place.edge);
    }
    return theme.road;
}

// The squares of an exercise book, printed over everything that lies flat.
Colour with_squares(Theme const& theme, Point at, Colour colour) {
    constexpr double SQUARE = 20.0; // cells
    auto const off = [](double value) { return std::fabs(std::remainder(value, SQUARE)); };
    bool const on_line = std::min(off(at.x), off(at.y)) < 0.5;
    return on_line ? mix(colour, theme.water_deep, 0.7 * theme.paper) : colour;
}

// Chequers on the goal line's cells and the strip before it.
Colour with_goal(PaintSource const& source, Point at, Colour colour) {
    Track const& track = source.track;
    constexpr double HALF = 5.0;
    bool const level = track.goal_y1 == track.goal_y2;
    double const across = level ? at.y - track.goal_y1 - 0.5 : at.x - track.goal_x1 - 0.5;
    double const along = level ? at.x : at.y;
    double const low = level ? track.goal_x1 : track.goal_y1;
    double const high = (level ? track.goal_x2 : track.goal_y2) + 1.0;
    if (std::fabs(across) > HALF || along < low || along > high) return colour;
    bool const dark = (static_cast<int>(std::floor((across + HALF) / 5.0)) +
                       static_cast<int>(std::floor(along / 5.0))) %
                          2 !=
                      0;
    return dark ? shade(source.theme.line, 0.1) : source.theme.line;
}

Colour item_colour(Theme const& theme, SceneryItem const& item, Point offset) {
    double const light = 0.5 - (offset.x + offset.y) / (item.length + item.width);
    switch (item.kind) {
    case SceneryKind::rock:
        return shade(theme.stone, 0.7 + 0.5 * light);
    case SceneryKind::house:
    case SceneryKind::shed:
        return shade(theme.roof, 0.8 + 0.3 * light);
    case SceneryKind::stand:
    case SceneryKind::container:
        return shade(theme.wall, 0.8 + 0.3 * light);
    case SceneryKind::lamp:
        return theme.lamp;
    case SceneryKind::boat:
        return shade(theme.wall, 1.0 + 0.2 * light);
    case SceneryKind::hay:
        return shade(theme.field, 0.8 + 0.3 * light);
    case SceneryKind::tyres:
        return Colour{0.1F, 0.1F, 0.1F};
    default:
        return mix(theme.leaf_dark, theme.leaf_light, light);
    }
}

bool covers(SceneryItem const& item, Point offset) {
    bool const round = item.length == item.width && item.angle == 0.0;
    if (round) return length(offset) <= item.length / 2.0;
    Point const along = direction(item.angle);
    return std::fabs(dot(offset, along)) <= item.length / 2.0 &&
           std::fabs(cross(along, offset)) <= item.width / 2.0;
}

struct Picture {
    std::span<std::uint32_t> pixels;
    int width = 0;
    int height = 0;
};

template <typename Paint>
void paint_box(Picture const& picture, Point middle, double radius, Paint paint) {
    auto const pixel = [](double cells) { return static_cast<int>(cells * PICTURE_SCALE); };
    for (int y = std::max(0, pixel(middle.y - radius));
         y < std::min(picture.height, pixel(middle.y + radius) + 1); y++) {
        for (int x = std::max(0, pixel(middle.x - radius));
             x < std::min(picture.width, pixel(middle.x + radius) + 1); x++) {
            std::size_t const at =
                static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                static_cast<std::size_t>(x);
            paint(picture.pixels[at], pixel_place(x, y) - middle);
        }
    }
}

// Worn paint on whatever ground is there, also on the road.
void paint_lettering(Theme const& theme, Lettering const& lettering, Picture const& picture) {
    double const wide =
        lettering.height * STENCIL_ASPECT * static_cast<double>(lettering.text.size());
    Point const along = direction(lettering.angle);
    double const radius = std::hypot(wide, lettering.height) / 2.0;
    paint_box(picture, lettering.at, radius, [&](std::uint32_t& pixel, Point offset) {
        double const x = (dot(offset, along) + wide / 2.0) / lettering.height;
        double const y = cross(along, offset) / lettering.height + 0.5;
        if (!stencil_covers(lettering.text, x, y)) return;
        double const left = 0.75 * smoothstep(0.1, 0.5, speckle(lettering.at + offset, 3.0, 11));
        pixel = pack(mix(unpack(pixel), theme.ink, left));
    });
}

// A thing's shadow falls by its height, which goes with its smaller side.
void paint_shadow(PaintSource const& source, SceneryItem const& item, Picture const& picture) {
    Theme const& theme = source.theme;
    double const fall = 0.35 * theme.shadow_length * std::min(item.length, item.width);
    Point const shift = fall * direction(theme.shadow_angle * std::numbers::pi / 180.0);
    double const radius = std::hypot(item.length, item.width) / 2.0;
    paint_box(picture, item.at + shift, radius, [&](std::uint32_t& pixel, Point offset) {
        if (covers(item, offset)) pixel = pack(shade(unpack(pixel), 1.0 - theme.shadow));
    });
}

void paint_item(PaintSource const& source, SceneryItem const& item, Picture const& picture) {
    double const radius = std::hypot(item.length, item.width) / 2.0;
    paint_box(picture, item.at, radius, [&](std::uint32_t& pixel, Point offset) {
        if (!covers(item, offset)) return;
        bool const lit = item.kind == SceneryKind::lamp; // lamps shine through the night
        double const light = lit ? 1.0 : 1.0 - 0.6 * source.theme.dark;
        pixel = pack(shade(item_colour(source.theme, item, offset), light));
    });
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
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            Point const at = pixel_place(x, y);
            Colour const flat = with_squares(source.theme, at, ground_colour(source, at));
            Colour const colour = shade(with_goal(source, at, flat), 1.0 - 0.6 * source.theme.dark);
            picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                           static_cast<std::size_t>(x)] = pack(colour);
        }
    }
    for (Lettering const& lettering : source.course.letterings) {
        paint_lettering(source.theme, lettering, picture);
    }
    for (SceneryItem const& item : source.items) paint_shadow(source, item, picture);
    for (SceneryItem const& item : source.items) paint_item(source, item, picture);
    return surface;
}
