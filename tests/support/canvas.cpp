#include "support/canvas.h"

#include "base/screen.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <ostream>
#include <stdexcept>

namespace {

std::uint32_t* pixel_address(SDL_Surface const* surface, int x, int y) {
    auto* bytes = static_cast<std::uint8_t*>(surface->pixels);
    return reinterpret_cast<std::uint32_t*>(bytes + std::ptrdiff_t{y} * surface->pitch) + x;
}

} // namespace

bool operator==(SDL_Color a, SDL_Color b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

void PrintTo(SDL_Color color, std::ostream* out) {
    *out << int{color.r} << ' ' << int{color.g} << ' ' << int{color.b} << ' ' << int{color.a};
}

int difference(SDL_Color a, SDL_Color b) {
    return std::max({std::abs(a.r - b.r), std::abs(a.g - b.g), std::abs(a.b - b.b)});
}

SurfaceHandle make_surface(int width, int height, SDL_Color fill) {
    SurfaceHandle surface(
        SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_ABGR8888));
    if (!surface) throw std::runtime_error(SDL_GetError());
    SDL_FillRect(surface.get(), nullptr,
                 SDL_MapRGBA(surface->format, fill.r, fill.g, fill.b, fill.a));
    return surface;
}

SDL_Color surface_pixel(SDL_Surface const* surface, int x, int y) {
    SDL_Color color{};
    SDL_GetRGBA(*pixel_address(surface, x, y), surface->format, &color.r, &color.g, &color.b,
                &color.a);
    return color;
}

std::vector<SDL_Color> surface_pixels(SDL_Surface const* surface, SDL_Rect const& area) {
    std::vector<SDL_Color> all;
    all.reserve(static_cast<std::size_t>(area.w) * static_cast<std::size_t>(area.h));
    for (int i = 0; i < area.w * area.h; ++i) {
        all.push_back(surface_pixel(surface, area.x + i % area.w, area.y + i / area.w));
    }
    return all;
}

void set_surface_pixel(SDL_Surface* surface, int x, int y, SDL_Color color) {
    *pixel_address(surface, x, y) =
        SDL_MapRGBA(surface->format, color.r, color.g, color.b, color.a);
}

Canvas::Canvas(int width, int height) : surface_(make_surface(width, height, {0, 0, 0, 255})) {
    renderer_ = SDL_CreateSoftwareRenderer(surface_.get());
    if (renderer_ == nullptr) throw std::runtime_error(SDL_GetError());
}

Canvas::~Canvas() {
    SDL_DestroyRenderer(renderer_);
}

SDL_Color Canvas::at(int x, int y) const {
    SDL_RenderFlush(renderer_);
    return surface_pixel(surface_.get(), x, y);
}

void Canvas::clear(SDL_Color color) {
    SDL_SetRenderDrawColor(renderer_, color.r, color.g, color.b, color.a);
    SDL_RenderClear(renderer_);
}

int Canvas::count(SDL_Rect const& area, SDL_Color color) const {
    return area.w * area.h - count_other(area, color);
}

int Canvas::count_other(SDL_Rect const& area, SDL_Color color, int tolerance) const {
    std::vector<SDL_Color> const all = pixels(area);
    return static_cast<int>(std::count_if(all.begin(), all.end(), [&](SDL_Color pixel) {
        return difference(pixel, color) > tolerance;
    }));
}

std::vector<SDL_Color> Canvas::pixels(SDL_Rect const& area) const {
    SDL_RenderFlush(renderer_);
    return surface_pixels(surface_.get(), area);
}

ScreenlessWindow::ScreenlessWindow(SDL_Point size) {
    SDL_InitSubSystem(SDL_INIT_VIDEO);
    window_ = SDL_CreateWindow("", 0, 0, size.x, size.y, SDL_WINDOW_RESIZABLE);
    renderer_ = SDL_CreateRenderer(window_, -1, SDL_RENDERER_SOFTWARE);
    if (renderer_ == nullptr) throw std::runtime_error(SDL_GetError());
    SDL_RenderSetLogicalSize(renderer_, SCREEN_W, SCREEN_H);
}

ScreenlessWindow::~ScreenlessWindow() {
    SDL_DestroyRenderer(renderer_);
    SDL_DestroyWindow(window_);
}

void ScreenlessWindow::resize(SDL_Point size) {
    SDL_SetWindowSize(window_, size.x, size.y);
    SDL_PumpEvents();
}

std::vector<std::uint32_t> ScreenlessWindow::pixels() const {
    int w = 0;
    int h = 0;
    SDL_GetRendererOutputSize(renderer_, &w, &h);
    std::vector<std::uint32_t> read(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
    SDL_RenderSetLogicalSize(renderer_, 0, 0);
    SDL_RenderReadPixels(renderer_, nullptr, SDL_PIXELFORMAT_ARGB8888, read.data(), w * 4);
    SDL_RenderSetLogicalSize(renderer_, SCREEN_W, SCREEN_H);
    return read;
}
