#include "support/canvas.h"

#include <cstddef>
#include <cstdlib>
#include <stdexcept>

namespace {

std::uint32_t* pixel_address(SDL_Surface const* surface, int x, int y) {
    auto* bytes = static_cast<std::uint8_t*>(surface->pixels);
    return reinterpret_cast<std::uint32_t*>(bytes + std::ptrdiff_t{y} * surface->pitch) + x;
}

} // namespace

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
    int others = 0;
    for (int y = area.y; y < area.y + area.h; ++y) {
        for (int x = area.x; x < area.x + area.w; ++x) {
            SDL_Color const c = at(x, y);
            bool const same = std::abs(c.r - color.r) <= tolerance &&
                              std::abs(c.g - color.g) <= tolerance &&
                              std::abs(c.b - color.b) <= tolerance;
            if (!same) ++others;
        }
    }
    return others;
}
