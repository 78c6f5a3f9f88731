#include "screens/menu_art.h"

#include "render/image.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

constexpr int VISIBLE_ALPHA = 16; // a pixel above this counts as part of the picture

// Bounding box of the visible pixels; empty if there is none.
SDL_Rect visible_box(SDL_Surface const& picture) {
    int x0 = picture.w;
    int y0 = picture.h;
    int x1 = -1;
    int y1 = -1;
    auto const* pixels = static_cast<std::uint8_t const*>(picture.pixels);
    for (int y = 0; y < picture.h; ++y) {
        std::uint8_t const* row = pixels + static_cast<std::ptrdiff_t>(y) * picture.pitch;
        for (int x = 0; x < picture.w; ++x) {
            if (row[static_cast<std::ptrdiff_t>(x) * 4 + 3] <= VISIBLE_ALPHA) continue;
            x0 = std::min(x0, x);
            x1 = std::max(x1, x);
            y0 = std::min(y0, y);
            y1 = std::max(y1, y);
        }
    }
    if (x1 < 0) return {};
    return {x0, y0, x1 - x0 + 1, y1 - y0 + 1};
}

SurfaceHandle cut_out(SDL_Surface* picture, SDL_Rect const& box) {
    SurfaceHandle cut(SDL_CreateRGBSurfaceWithFormat(0, box.w, box.h, 32, PIXEL_FORMAT));
    if (!cut) return cut;
    SDL_SetSurfaceBlendMode(picture, SDL_BLENDMODE_NONE); // copy the alpha, do not apply it
    if (SDL_BlitSurface(picture, &box, cut.get(), nullptr) != 0) cut.reset();
    return cut;
}

// How much of the pixel at (x, y) the line covers, 0..1: it follows a rounded square centred in
// `side` pixels.
double ring_coverage(int side, int column, int row) {
    double const centre = 0.5 * side;
    double const half = std::max(side * 0.055, 1.0) * 0.5;
    double const outer = centre - (half + 1.0);
    double const radius = 0.38 * outer;
    double const box = outer - radius;
    double const dx = std::abs(column + 0.5 - centre) - box;
    double const dy = std::abs(row + 0.5 - centre) - box;
    double const distance =
        std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) - radius;
    return std::clamp(half - std::abs(distance) + 0.5, 0.0, 1.0);
}

} // namespace

SurfaceHandle load_trimmed_art(char const* path, std::function<int(int)> const& target_height) {
    SurfaceHandle const picture = load_picture(path);
    if (!picture) return nullptr;
    SDL_Rect const box = visible_box(*picture);
    if (box.w == 0) {
        SDL_SetError("nothing visible in %s", path);
        return nullptr;
    }
    SurfaceHandle cut = cut_out(picture.get(), box);
    if (!cut) return cut;
    int const target = target_height(box.h);
    int const h = std::min(target, box.h);
    double const w_exact = static_cast<double>(h) * box.w / box.h;
    int const w = std::max(1, static_cast<int>(std::lround(w_exact)));
    if (w == box.w && target >= box.h) return cut;
    return SurfaceHandle(downscale_box(cut.get(), w, h));
}

TextureHandle make_help_ring(SDL_Renderer* renderer, int size, double menu_scale) {
    int const side = std::max(2, static_cast<int>(std::lround(size * menu_scale)));
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            auto const alpha =
                static_cast<std::uint32_t>(std::lround(255.0 * ring_coverage(side, column, row)));
            pixels.push_back((alpha << 24U) | 0x00FFFFFFU);
        }
    }
    TextureHandle ring(
        SDL_CreateTexture(renderer, PIXEL_FORMAT, SDL_TEXTUREACCESS_STATIC, side, side));
    if (!ring) return ring;
    SDL_UpdateTexture(ring.get(), nullptr, pixels.data(), side * 4);
    SDL_SetTextureBlendMode(ring.get(), SDL_BLENDMODE_BLEND);
    SDL_SetTextureScaleMode(ring.get(), SDL_ScaleModeLinear);
    return ring;
}
