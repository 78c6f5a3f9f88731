#include "records/miniature.h"

#include "render/image.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double LONG_SIDE = 520.0;
constexpr double LONGEST_MOVE = 1e9; // pixels between two points; nothing drives that far

using Channels = std::array<std::uint8_t, 4>; // red, green, blue, alpha: PIXEL_FORMAT in memory

Channels* pixel_channels(SDL_Surface* surface, int x, int y) {
    return reinterpret_cast<Channels*>(pixel_row(surface, y)) + x;
}

// The pixels of one axis that an output pixel averages: [first, last), at least one.
struct Range {
    int first;
    int last;
};

Range range_of(int position, double ratio, int size) {
    int const first = static_cast<int>(position * ratio);
    int const last = std::min(static_cast<int>(std::ceil((position + 1) * ratio)), size);
    return {first, std::max(last, first + 1)};
}

// The plain mean, alpha like the colours.
Channels mean_of(SDL_Surface* source, Range columns, Range rows) {
    std::array<std::uint64_t, 4> sums{};
    for (int y = rows.first; y < rows.last; ++y) {
        Channels const* row = pixel_channels(source, 0, y);
        for (int x = columns.first; x < columns.last; ++x) {
            for (std::size_t c = 0; c < 4; ++c) sums[c] += row[x][c];
        }
    }
    auto const count = static_cast<std::uint64_t>(columns.last - columns.first) *
                       static_cast<std::uint64_t>(rows.last - rows.first);
    Channels mean{};
    for (std::size_t c = 0; c < 4; ++c) mean[c] = static_cast<std::uint8_t>(sums[c] / count);
    return mean;
}

// `source` itself if it is small enough.
SurfaceHandle reduce(SurfaceHandle source) {
    double const scale = std::min(1.0, LONG_SIDE / std::max(source->w, source->h));
    int const out_w = std::max(1, static_cast<int>(std::lround(source->w * scale)));
    int const out_h = std::max(1, static_cast<int>(std::lround(source->h * scale)));
    if (out_w == source->w && out_h == source->h) return source;

    SurfaceHandle out(SDL_CreateRGBSurfaceWithFormat(0, out_w, out_h, 32, PIXEL_FORMAT));
    if (!out) return {};
    double const ratio_x = static_cast<double>(source->w) / out_w;
    double const ratio_y = static_cast<double>(source->h) / out_h;
    for (int j = 0; j < out_h; ++j) {
        Range const rows = range_of(j, ratio_y, source->h);
        for (int i = 0; i < out_w; ++i) {
            *pixel_channels(out.get(), i, j) =
                mean_of(source.get(), range_of(i, ratio_x, source->w), rows);
        }
    }
    return out;
}

// JPEG knows no transparency and paper is white.
void flatten_on_white(SDL_Surface* surface) {
    for (int y = 0; y < surface->h; ++y) {
        for (int x = 0; x < surface->w; ++x) {
            Channels& pixel = *pixel_channels(surface, x, y);
            double const alpha = pixel[3] / 255.0;
            for (std::size_t c = 0; c < 3; ++c) {
                pixel[c] = static_cast<std::uint8_t>(
                    std::lround(pixel[c] * alpha + (1.0 - alpha) * 255.0));
            }
            pixel[3] = 255;
        }
    }
}

struct Place {
    double x; // pixels
    double y;
};

// The red line, pressed from dots.
struct Pen {
    SDL_Surface* surface;
    double radius; // pixels

    void dot(double x, double y) const { stamp_disk(surface, x, y, radius, 220, 30, 30); }
    void line(Place from, Place to) const;
};

// The part of one axis's way from `from` by `d` that lies between `low` and `high`, taken off
// `first` and `last`, which are shares of the way.
void clip_way(double from, double d, double low, double high, double& first, double& last) {
    if (d == 0.0) {
        if (from < low || from > high) last = -1.0;
        return;
    }
    double const a = (low - from) / d;
    double const b = (high - from) / d;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
}

// A dot at every pixel of the way, both ends included. Those that cannot touch the surface are
// left out, as a damaged recording may jump far away.
void Pen::line(Place from, Place to) const {
    double const dx = to.x - from.x;
    double const dy = to.y - from.y;
    double const steps = std::max(1.0, std::ceil(std::hypot(dx, dy)));
    if (!(steps <= LONGEST_MOVE)) return;
    double const reach = radius + 2.0;
    double first = 0.0;
    double last = 1.0;
    clip_way(from.x, dx, -reach, surface->w + reach, first, last);
    clip_way(from.y, dy, -reach, surface->h + reach, first, last);
    if (first > last) return;
    auto const end = static_cast<std::int64_t>(std::min(steps, std::ceil(last * steps)));
    for (auto k = static_cast<std::int64_t>(first * steps); k <= end; ++k) {
        auto const way = static_cast<double>(k);
        dot(from.x + dx * way / steps, from.y + dy * way / steps);
    }
}

void draw_lap(SDL_Surface* surface, std::vector<SDL_FPoint> const& points, int grid_w, int grid_h) {
    double const fx = static_cast<double>(surface->w) / grid_w;
    double const fy = static_cast<double>(surface->h) / grid_h;
    Pen const pen{surface, std::max(surface->w / 220.0, 1.2)};
    auto const place_of = [&](SDL_FPoint point) {
        return Place{static_cast<double>(point.x) * fx, static_cast<double>(point.y) * fy};
    };
    Place before = place_of(points[0]);
    pen.dot(before.x, before.y);
    for (std::size_t i = 1; i < points.size(); ++i) {
        Place const place = place_of(points[i]);
        pen.line(before, place);
        before = place;
    }
}

std::uint8_t blend(std::uint8_t from, std::uint8_t target, double share) {
    return static_cast<std::uint8_t>(std::lround((target - from) * share + from));
}

// Pixels from floor(centre - radius - 1) to ceil(centre + radius + 1), as far as there are any.
Range touched(double centre, double radius, int size) {
    double const first =
        std::clamp(std::floor(centre - radius - 1.0), 0.0, static_cast<double>(size));
    double const last = std::clamp(std::ceil(centre + radius + 1.0), -1.0, size - 1.0);
    return {static_cast<int>(first), static_cast<int>(last) + 1};
}

} // namespace

void stamp_disk(SDL_Surface* surface, double cx, double cy, double radius, std::uint8_t r,
                std::uint8_t g, std::uint8_t b) {
    if (!std::isfinite(cx) || !std::isfinite(cy) || !std::isfinite(radius)) return;
    Channels const target{r, g, b, 255};
    Range const rows = touched(cy, radius, surface->h);
    Range const columns = touched(cx, radius, surface->w);
    for (int y = rows.first; y < rows.last; ++y) {
        for (int x = columns.first; x < columns.last; ++x) {
            Channels& pixel = *pixel_channels(surface, x, y);
            if (pixel == target) continue; // painted in full already: most of a slow lap
            double const distance = std::hypot(x + 0.5 - cx, y + 0.5 - cy);
            double const coverage = std::clamp(radius + 0.5 - distance, 0.0, 1.0);
            if (coverage == 0.0) continue;
            for (std::size_t c = 0; c < 3; ++c) pixel[c] = blend(pixel[c], target[c], coverage);
            pixel[3] = 255;
        }
    }
}

SDL_Surface* build_miniature(std::string const& png, std::vector<SDL_FPoint> const& points,
                             int grid_w, int grid_h) {
    SurfaceHandle picture = load_picture(png.c_str());
    if (!picture) return nullptr;
    picture = reduce(std::move(picture));
    if (!picture) return nullptr;
    flatten_on_white(picture.get());
    if (!points.empty() && grid_w >= 1 && grid_h >= 1) {
        draw_lap(picture.get(), points, grid_w, grid_h);
    }
    return picture.release();
}
