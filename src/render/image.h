#pragma once

// Operations on pictures in memory that several screens share.

#include "base/sdl_handles.h"

#include <cstddef>
#include <cstdint>
#include <functional>

// The one format that all our pixel loops work in: red in the lowest byte of a 32-bit value.
constexpr std::uint32_t PIXEL_FORMAT = SDL_PIXELFORMAT_ABGR8888;

// 8192 x 8192, the largest texture of many GPUs: 256 MiB decoded.
constexpr std::int64_t MAX_PICTURE_PIXELS = std::int64_t{1} << 26;

// Holds a surface's pixels in reach for as long as the object lives; false if locking failed.
class PixelLock {
public:
    explicit PixelLock(SDL_Surface* surface)
        : surface_(SDL_LockSurface(surface) == 0 ? surface : nullptr) {}
    ~PixelLock() {
        if (surface_ != nullptr) SDL_UnlockSurface(surface_);
    }
    PixelLock(PixelLock const&) = delete;
    PixelLock& operator=(PixelLock const&) = delete;

    explicit operator bool() const { return surface_ != nullptr; }

private:
    SDL_Surface* surface_;
};

// Row `y` of a locked surface of 4 bytes a pixel.
inline std::uint32_t* pixel_row(SDL_Surface* surface, int y) {
    auto* bytes = static_cast<std::uint8_t*>(surface->pixels);
    return reinterpret_cast<std::uint32_t*>(bytes + std::ptrdiff_t{y} * surface->pitch);
}

// A copy of `surface` in PIXEL_FORMAT; null if it is null or conversion fails.
SurfaceHandle to_pixel_format(SDL_Surface* surface);
// IMG_Load and to_pixel_format; null on failure, with SDL_GetError set. Only PNG, JPEG and BMP are
// taken, of at most MAX_PICTURE_PIXELS, so that no damaged head asks for all memory.
SurfaceHandle load_picture(char const* path);

// The size that a picture is to be reduced to, for its own; at least 1 x 1.
using SizeChoice = std::function<SDL_Point(SDL_Point)>;
// What load_picture gives, reduced by downscale_box to the chosen size. Of a large palette PNG only
// a row is held at a time. Null on failure, with SDL_GetError set.
SurfaceHandle load_reduced(char const* path, SizeChoice const& choose);

// The picture as a static texture; its size in pixels goes to `w` and `h` (0 on failure). Opaque
// pictures do not blend. Null on failure, with SDL_GetError set; the same files are taken as by
// load_picture. A track's picture fills 60 MB and more as a texture: beside it only a band of rows
// is held.
TextureHandle load_texture(SDL_Renderer* renderer, char const* path, int* w, int* h);

// The exact area average, weighted by alpha so that transparent pixels lend no colour to an edge.
// `source` has 4 bytes a pixel and stays the caller's; w and h are at least 1. Null on failure.
SDL_Surface* downscale_box(SDL_Surface* source, int w, int h);
