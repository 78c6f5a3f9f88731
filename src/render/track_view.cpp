#include "render/track_view.h"

#include "base/screen.h"
#include "render/car_sprite.h"
#include "render/skid_trail.h"
#include "render/view_settings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

constexpr int WISHED_CELL = 18;           // pixels: what a small track is drawn at
constexpr int LARGE_TRACK_CELL = 2;       // pixels, for tracks beyond the limit on both sides
constexpr int LARGE_TRACK = 320;          // cells
constexpr int USUAL_TEXTURE_LIMIT = 4096; // pixels, for a renderer that does not tell its own
constexpr int RASTER_ROWS = 64;           // pixels: how much of a raster is painted at a time

SDL_Color cell_color(std::uint8_t cell) {
    switch (cell) {
    case '.':
    case '*':
        return {60, 60, 64, 255};
    case 'g':
        return {30, 100, 40, 255};
    case '!':
        return {240, 240, 240, 255};
    case 'w':
        return {230, 230, 230, 255};
    case 'b':
        return {170, 170, 210, 255};
    case 'r':
        return {200, 40, 40, 255};
    default:
        return {255, 0, 255, 255};
    }
}

// As pixels.
struct RasterColors {
    std::array<std::uint32_t, 256> cells{}; // by the cell's character
    std::uint32_t checker = 0;              // the goal line's dark squares
};

RasterColors raster_colors(std::uint32_t format) {
    RasterColors colors;
    SDL_PixelFormat* const mapped = SDL_AllocFormat(format);
    if (mapped == nullptr) return colors;
    for (std::size_t cell = 0; cell < colors.cells.size(); ++cell) {
        SDL_Color const color = cell_color(static_cast<std::uint8_t>(cell));
        colors.cells[cell] = SDL_MapRGBA(mapped, color.r, color.g, color.b, color.a);
    }
    colors.checker = SDL_MapRGBA(mapped, 20, 20, 20, 255);
    SDL_FreeFormat(mapped);
    return colors;
}

// A row of cells as PIXELS_PER_CELL equal rows of pixels.
void paint_row(Track const& track, int row, RasterColors const& colors, std::uint32_t* pixels) {
    std::uint8_t const* cells = &track.cells[track.index(0, row)];
    std::uint32_t* end = pixels;
    if (PIXELS_PER_CELL == 1) { // large tracks, for which it counts
        std::transform(cells, cells + track.width, pixels,
                       [&colors](std::uint8_t cell) { return colors.cells[cell]; });
        return;
    }
    for (int column = 0; column < track.width; ++column) {
        end = std::fill_n(end, PIXELS_PER_CELL, colors.cells[cells[column]]);
    }
    for (int copy = 1; copy < PIXELS_PER_CELL; ++copy) {
        std::copy_n(pixels, end - pixels, pixels + copy * (end - pixels));
    }
}

// Rows of pixels of the whole raster, from `top` on.
struct Band {
    std::uint32_t* pixels;
    int width;
    int top;
    int height;
};

void darken(Band const& band, SDL_Rect const& place, std::uint32_t color) {
    SDL_Rect const all = {0, band.top, band.width, band.height};
    SDL_Rect part{};
    if (SDL_IntersectRect(&place, &all, &part) == SDL_FALSE) return;
    for (int y = part.y - band.top; y < part.y - band.top + part.h; ++y) {
        std::fill_n(band.pixels + std::ptrdiff_t{y} * band.width + part.x, part.w, color);
    }
}

// Squares are not cut at the cell's edge: the last ones may reach into the next cell.
void checker_cell(Band const& band, int column, int row, std::uint32_t color) {
    int const square = PIXELS_PER_CELL < 6 ? 1 : PIXELS_PER_CELL / 3;
    for (int dy = 0; dy < PIXELS_PER_CELL; dy += square) {
        for (int dx = 0; dx < PIXELS_PER_CELL; dx += square) {
            if ((dx / square) % 2 != (dy / square) % 2) continue;
            darken(band,
                   {column * PIXELS_PER_CELL + dx, row * PIXELS_PER_CELL + dy, square, square},
                   color);
        }
    }
}

// What of the goal line reaches into the band.
void checker_goal_line(Band const& band, Track const& track, std::uint32_t color) {
    auto const [left, right] = std::minmax(track.goal_x1, track.goal_x2);
    auto const [top, bottom] = std::minmax(track.goal_y1, track.goal_y2);
    int const first = std::max({0, top, band.top / PIXELS_PER_CELL - 1});
    int const last =
        std::min({bottom, track.height - 1, (band.top + band.height - 1) / PIXELS_PER_CELL});
    for (int row = first; row <= last; ++row) {
        for (int column = std::max(0, left); column <= std::min(right, track.width - 1); ++column) {
            if (track.cells[track.index(column, row)] == '!') {
                checker_cell(band, column, row, color);
            }
        }
    }
}

// Painted here and copied to the texture a band at a time: a large grid has hundreds of thousands
// of runs of equal cells, too many to be drawn as rectangles. Nor could they be drawn once and for
// all: Direct3D loses what was drawn into a texture when the window changes its size.
bool fill_texture(SDL_Texture* texture, Track const& track) {
    std::uint32_t format = 0;
    int w = 0;
    SDL_QueryTexture(texture, &format, nullptr, &w, nullptr);
    RasterColors const colors = raster_colors(format);
    int const band_cells = std::max(1, RASTER_ROWS / PIXELS_PER_CELL);
    std::ptrdiff_t const row_pixels = std::ptrdiff_t{w} * PIXELS_PER_CELL;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(row_pixels * band_cells));
    for (int row = 0; row < track.height; row += band_cells) {
        int const cells = std::min(band_cells, track.height - row);
        for (int i = 0; i < cells; ++i) {
            paint_row(track, row + i, colors, pixels.data() + i * row_pixels);
        }
        Band const band = {pixels.data(), w, row * PIXELS_PER_CELL, cells * PIXELS_PER_CELL};
        checker_goal_line(band, track, colors.checker);
        SDL_Rect const place = {0, band.top, band.width, band.height};
        if (SDL_UpdateTexture(texture, &place, pixels.data(), w * 4) != 0) return false;
    }
    return true;
}

// How one axis of the track lies in the view: which part of the texture shows where.
struct AxisPlacement {
    int destination; // logical pixels
    int destination_size;
    int source; // texture pixels
    int source_size;
    int left; // the map pixel at the viewport's edge; negative beside a bar
};

int map_size(int cells) {
    return std::max(1, static_cast<int>(std::lround(cells * world_scale())));
}

AxisPlacement place_axis(int view, int view_size, int cells, int texture_size, double camera) {
    int const map = map_size(cells);
    if (view_size >= map) {
        int const start = view + (view_size - map) / 2;
        return {start, map, 0, texture_size, view - start};
    }
    int const wanted = static_cast<int>(camera * world_scale()) - view_size / 2;
    int const left = std::min(std::max(wanted, 0), map - view_size);
    double const ratio = static_cast<double>(texture_size) / map;
    return {view, view_size, static_cast<int>(left * ratio), static_cast<int>(view_size * ratio),
            left};
}

void draw_track(SDL_Renderer* renderer, SDL_Texture* texture, SDL_Rect const& viewport,
                AxisPlacement const& x, AxisPlacement const& y) {
    SDL_Rect const destination = {x.destination, y.destination, x.destination_size,
                                  y.destination_size};
    if (SDL_RectEquals(&destination, &viewport) == SDL_FALSE) {
        SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
        SDL_RenderFillRect(renderer, &viewport);
    }
    SDL_Rect const source = {x.source, y.source, x.source_size, y.source_size};
    SDL_RenderCopy(renderer, texture, &source, &destination);
}

} // namespace

double world_scale() {
    return PIXELS_PER_CELL * zoom_factor();
}

int wished_pixels_per_cell(Track const& track) {
    bool const large = track.width > LARGE_TRACK && track.height > LARGE_TRACK;
    return large ? LARGE_TRACK_CELL : WISHED_CELL;
}

int drawing_scale(int pixels) {
    return std::max(1, pixels - 1);
}

int pixels_per_cell_for(Track const& track, SDL_Renderer* renderer) {
    SDL_RendererInfo info{};
    bool const known = SDL_GetRendererInfo(renderer, &info) == 0;
    auto const limit = [known](int value) {
        return known && value > 0 ? value : USUAL_TEXTURE_LIMIT;
    };
    int const across = std::max(1, limit(info.max_texture_width) / std::max(1, track.width));
    int const down = std::max(1, limit(info.max_texture_height) / std::max(1, track.height));
    return std::min({wished_pixels_per_cell(track), across, down});
}

int zoom_min(Track const& track, int view_w) {
    double const fit = std::min(view_w / (static_cast<double>(track.width) * PIXELS_PER_CELL),
                                SCREEN_H / (static_cast<double>(track.height) * PIXELS_PER_CELL));
    return std::min(0, static_cast<int>(std::floor(4.0 * std::log2(fit))));
}

Vec2 point_in_view(SDL_Rect const& viewport, Track const& track, Vec2 eye, Vec2 place) {
    int const left = place_axis(viewport.x, viewport.w, track.width, 0, eye.x).left;
    int const top = place_axis(viewport.y, viewport.h, track.height, 0, eye.y).left;
    return {place.x * world_scale() + viewport.x - left,
            place.y * world_scale() + viewport.y - top};
}

TextureHandle render_build_track_texture(SDL_Renderer* renderer, Track const& track, int* out_w,
                                         int* out_h) {
    *out_w = track.width * PIXELS_PER_CELL;
    *out_h = track.height * PIXELS_PER_CELL;
    TextureHandle texture(SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA8888,
                                            SDL_TEXTUREACCESS_STATIC, *out_w, *out_h));
    if (!texture || !fill_texture(texture.get(), track)) {
        SDL_Log("CreateTexture %dx%d failed: %s", *out_w, *out_h, SDL_GetError());
        return {};
    }
    SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
    return texture;
}

void render_viewport(SDL_Renderer* renderer, SDL_Texture* texture, int tex_w, int tex_h,
                     Track const& track, PlayerView const& view, CarState const& car,
                     PlayerView const& other_view, CarState const& other_car,
                     CarState const* ghost) {
    SDL_Rect const& viewport = view.viewport;
    AxisPlacement const x =
        place_axis(viewport.x, viewport.w, track.width, tex_w, view.cam_ready ? view.cam_x : car.x);
    AxisPlacement const y = place_axis(viewport.y, viewport.h, track.height, tex_h,
                                       view.cam_ready ? view.cam_y : car.y);
    bool const other_shows = other_view.viewport.w > 0;

    draw_track(renderer, texture, viewport, x, y);

    std::uint32_t const now = SDL_GetTicks();
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    draw_skids(renderer, view, x.left, y.left, now, viewport);
    if (other_shows) draw_skids(renderer, other_view, x.left, y.left, now, viewport);

    SDL_RenderSetClipRect(renderer, &viewport);
    auto const draw = [&](CarState const& who, SDL_Texture* sprite, PlayerView const& look,
                          std::uint8_t alpha) {
        auto const screen_x = static_cast<float>(who.x * world_scale() + viewport.x - x.left);
        auto const screen_y = static_cast<float>(who.y * world_scale() + viewport.y - y.left);
        draw_car_at(renderer, screen_x, screen_y, who.heading, sprite, look.body_color,
                    look.accent_color, alpha);
    };
    if (other_shows) {
        draw(other_car, other_view.car_texture.get(), other_view, other_view.car_alpha);
    }
    if (ghost != nullptr) {
        bool const dressed = fancy_ghost && view.ghost_texture;
        draw(*ghost, (dressed ? view.ghost_texture : view.car_texture).get(), view, GHOST_ALPHA);
    }
    draw(car, view.car_texture.get(), view, view.car_alpha);
    SDL_RenderSetClipRect(renderer, nullptr);
}
