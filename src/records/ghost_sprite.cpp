#include "records/ghost_sprite.h"

#include "render/car_sprite.h"
#include "render/image.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

// The rim's width in pixels of the car's art at its full size: it is reduced with the car.
constexpr int OUTLINE = 35;

constexpr float SIDE_STEP = 1.0F;
constexpr float DIAGONAL_STEP = 1.4142135F;
constexpr float FAR_AWAY = 1e9F;

std::uint8_t alpha_of(std::uint32_t pixel) {
    return static_cast<std::uint8_t>(pixel >> 24U);
}

// How far each pixel is from the nearest transparent one, by a chamfer transform: steps to the
// side and along the diagonal, in two sweeps. The field has a border of zeros on all sides, so that
// the edge of the picture acts like transparency and the sweeps need no special cases.
class DistanceField {
public:
    DistanceField(int w, int h)
        : w_(w), h_(h), stride_(static_cast<std::size_t>(w) + 2),
          cells_(stride_ * (static_cast<std::size_t>(h) + 2), 0.0F) {}

    // Row `y` of the picture; from -1 on and up to h + 1 the border is in reach.
    float* row(int y) { return &cells_[(static_cast<std::size_t>(y + 1)) * stride_ + 1]; }

    void sweep() {
        for (int y = 0; y < h_; ++y) sweep_forward(row(y - 1), row(y));
        for (int y = h_ - 1; y >= 0; --y) sweep_backward(row(y + 1), row(y));
    }

private:
    void sweep_forward(float const* above, float* here) const {
        for (int x = 0; x < w_; ++x) {
            float const side = std::min(here[x - 1], above[x]) + SIDE_STEP;
            float const diagonal = std::min(above[x - 1], above[x + 1]) + DIAGONAL_STEP;
            here[x] = std::min({here[x], side, diagonal});
        }
    }
    void sweep_backward(float const* below, float* here) const {
        for (int x = w_ - 1; x >= 0; --x) {
            float const side = std::min(here[x + 1], below[x]) + SIDE_STEP;
            float const diagonal = std::min(below[x - 1], below[x + 1]) + DIAGONAL_STEP;
            here[x] = std::min({here[x], side, diagonal});
        }
    }

    int w_;
    int h_;
    std::size_t stride_;
    std::vector<float> cells_;
};

// A slightly lightened grey of the pixel, as opaque as it was.
std::uint32_t grey_of(std::uint32_t pixel) {
    double const red = pixel & 0xFFU;
    double const green = (pixel >> 8U) & 0xFFU;
    double const blue = (pixel >> 16U) & 0xFFU;
    double const light = std::min(255.0, 0.299 * red + 0.587 * green + 0.114 * blue + 40.0);
    auto const g = static_cast<std::uint32_t>(light);
    return (pixel & 0xFF000000U) | (g << 16U) | (g << 8U) | g;
}

std::uint32_t tinted(std::uint32_t pixel, SDL_Color color) {
    return (pixel & 0xFF000000U) | (static_cast<std::uint32_t>(color.b) << 16U) |
           (static_cast<std::uint32_t>(color.g) << 8U) | color.r;
}

// Greys all pixels that are not wholly transparent, and marks them in the field as solid.
void grey_and_mark(SDL_Surface* surface, DistanceField& field) {
    for (int y = 0; y < surface->h; ++y) {
        std::uint32_t* const pixels = pixel_row(surface, y);
        float* const distances = field.row(y);
        for (int x = 0; x < surface->w; ++x) {
            if (alpha_of(pixels[x]) == 0) continue;
            pixels[x] = grey_of(pixels[x]);
            distances[x] = FAR_AWAY;
        }
    }
}

// Transparent pixels are at a distance of 0 and stay as they are.
void paint_rim(SDL_Surface* surface, DistanceField& field, float outline, SDL_Color color) {
    for (int y = 0; y < surface->h; ++y) {
        std::uint32_t* const pixels = pixel_row(surface, y);
        float const* const distances = field.row(y);
        for (int x = 0; x < surface->w; ++x) {
            if (distances[x] > 0.0F && distances[x] < outline) pixels[x] = tinted(pixels[x], color);
        }
    }
}

void blacken(SDL_Surface* surface, int alpha_threshold) {
    for (int y = 0; y < surface->h; ++y) {
        std::uint32_t* const pixels = pixel_row(surface, y);
        std::transform(pixels, pixels + surface->w, pixels, [alpha_threshold](std::uint32_t pixel) {
            return alpha_of(pixel) > alpha_threshold ? 0xFF000000U : 0U;
        });
    }
}

} // namespace

SDL_Surface* ghost_transform(SDL_Surface* source, int outline, SDL_Color color) {
    SurfaceHandle ghost = to_pixel_format(source);
    if (!ghost) return nullptr;
    PixelLock const lock(ghost.get());
    if (!lock) return nullptr;
    DistanceField field(ghost->w, ghost->h);
    grey_and_mark(ghost.get(), field);
    field.sweep();
    paint_rim(ghost.get(), field, static_cast<float>(outline), color);
    return ghost.release();
}

TextureHandle ghost_make_texture(SDL_Renderer* renderer, char const* path, SDL_Color color) {
    SurfaceHandle const picture = load_picture(path);
    SurfaceHandle const ghost(ghost_transform(picture.get(), OUTLINE, color));
    if (!ghost) return {};
    return car_texture_from_surface(renderer, ghost.get());
}

SDL_Texture* make_silhouette_texture(SDL_Renderer* renderer, SDL_Surface* source,
                                     int alpha_threshold) {
    SurfaceHandle const silhouette = to_pixel_format(source);
    if (!silhouette) return nullptr;
    {
        PixelLock const lock(silhouette.get());
        if (!lock) return nullptr;
        blacken(silhouette.get(), alpha_threshold);
    }
    SDL_Texture* const texture = SDL_CreateTextureFromSurface(renderer, silhouette.get());
    if (texture == nullptr) return nullptr;
    SDL_SetTextureScaleMode(texture, SDL_ScaleModeLinear);
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
    return texture;
}

void draw_fitted(SDL_Renderer* renderer, SDL_Texture* texture, SDL_Rect const& box) {
    int w = 0;
    int h = 0;
    if (texture == nullptr || SDL_QueryTexture(texture, nullptr, nullptr, &w, &h) != 0) return;
    if (w <= 0 || h <= 0) return;
    double const k = std::min(static_cast<double>(box.h) / h, static_cast<double>(box.w) / w);
    int const fit_w = static_cast<int>(std::lround(w * k));
    int const fit_h = static_cast<int>(std::lround(h * k));
    SDL_Rect const place{box.x + (box.w - fit_w) / 2, box.y + (box.h - fit_h) / 2, fit_w, fit_h};
    SDL_RenderCopy(renderer, texture, nullptr, &place);
}
