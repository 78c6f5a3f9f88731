#include "render/image.h"

#include "render/picture_size.h"

#include <SDL_image.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int BAND_ROWS = 64; // 1 MB of a picture 4,000 pixels wide

// The source pixels under one output pixel, along one axis.
struct Span {
    double start;
    double end;
    int first; // whole pixels that the span touches: [first, last)
    int last;
};

Span span_of(int position, double step, int source_size) {
    double const start = position * step;
    double const end = start + step;
    return {start, end, static_cast<int>(std::floor(start)),
            std::min(source_size, static_cast<int>(std::ceil(end)))};
}

// Length of `span` that lies within the source pixel at `position`.
double overlap(Span const& span, int position) {
    return std::min(span.end, position + 1.0) - std::max(span.start, static_cast<double>(position));
}

SDL_Color unpack(std::uint32_t pixel, SDL_PixelFormat const* format) {
    SDL_Color color{};
    if (format->format == PIXEL_FORMAT) {
        color.r = static_cast<std::uint8_t>(pixel);
        color.g = static_cast<std::uint8_t>(pixel >> 8U);
        color.b = static_cast<std::uint8_t>(pixel >> 16U);
        color.a = static_cast<std::uint8_t>(pixel >> 24U);
    } else {
        SDL_GetRGBA(pixel, format, &color.r, &color.g, &color.b, &color.a);
    }
    return color;
}

struct Sums {
    double area = 0.0;
    double alpha = 0.0; // the colours below are weighted by alpha, too
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    void add(SDL_Color color, double weight) {
        double const alpha_weight = color.a * weight;
        area += weight;
        alpha += alpha_weight;
        red += color.r * alpha_weight;
        green += color.g * alpha_weight;
        blue += color.b * alpha_weight;
    }
};

std::uint8_t to_byte(double value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
}

SDL_Color average(Sums const& sums) {
    if (sums.alpha <= 0.0) return {0, 0, 0, 0};
    return {to_byte(sums.red / sums.alpha), to_byte(sums.green / sums.alpha),
            to_byte(sums.blue / sums.alpha), to_byte(sums.alpha / sums.area)};
}

Sums sum_of(SDL_Surface* source, Span const& columns, Span const& rows) {
    Sums sums;
    for (int y = rows.first; y < rows.last; ++y) {
        double const overlap_y = overlap(rows, y);
        if (overlap_y <= 0.0) continue;
        std::uint32_t const* row = pixel_row(source, y);
        for (int x = columns.first; x < columns.last; ++x) {
            double const overlap_x = overlap(columns, x);
            if (overlap_x <= 0.0) continue;
            sums.add(unpack(row[x], source->format), overlap_x * overlap_y);
        }
    }
    return sums;
}

bool can_be_opened(char const* path) {
    SDL_RWops* const file = SDL_RWFromFile(path, "rb"); // sets the error if not
    return file != nullptr && SDL_RWclose(file) == 0;
}

// The picture in whatever format its file has; null if it is none or claims to be too large.
SurfaceHandle decode(char const* path) {
    if (!can_be_opened(path)) return {};
    SDL_Point const size = picture_size(path);
    if (size.x < 1 || size.y < 1 || std::int64_t{size.x} * size.y > MAX_PICTURE_PIXELS) {
        SDL_SetError("%s: no picture, or too large (%d x %d)", path, size.x, size.y);
        return {};
    }
    return SurfaceHandle(IMG_Load(path));
}

bool palette_has_alpha(SDL_Palette const& palette) {
    return std::any_of(palette.colors, palette.colors + palette.ncolors,
                       [](SDL_Color color) { return color.a != 255; });
}

// Whether any pixel may be other than opaque.
bool has_alpha(SDL_Surface* picture) {
    SDL_PixelFormat const& format = *picture->format;
    if (SDL_HasColorKey(picture) == SDL_TRUE || format.Amask != 0) return true;
    return format.palette != nullptr && palette_has_alpha(*format.palette);
}

// The picture's own format if the renderer takes it, else the renderer's first of packed pixels
// that is alike in having alpha or none.
std::uint32_t texture_format(SDL_Renderer* renderer, SDL_Surface* picture) {
    SDL_RendererInfo info{};
    SDL_GetRendererInfo(renderer, &info);
    auto const* const first = info.texture_formats;
    auto const* const last = first + info.num_texture_formats;
    if (std::find(first, last, picture->format->format) != last) return picture->format->format;
    bool const alpha = has_alpha(picture);
    auto const* const alike = std::find_if(first, last, [alpha](std::uint32_t format) {
        return !SDL_ISPIXELFORMAT_FOURCC(format) && SDL_ISPIXELFORMAT_ALPHA(format) == alpha;
    });
    return alike != last ? *alike : PIXEL_FORMAT;
}

// Copies `picture` into a texture of its size, converting a band of rows at a time if need be.
bool upload(SDL_Texture* texture, SDL_Surface* picture) {
    std::uint32_t format = 0;
    SDL_QueryTexture(texture, &format, nullptr, nullptr, nullptr);
    if (format == picture->format->format) {
        return SDL_UpdateTexture(texture, nullptr, picture->pixels, picture->pitch) == 0;
    }
    SurfaceHandle const band(
        SDL_CreateRGBSurfaceWithFormat(0, picture->w, std::min(BAND_ROWS, picture->h), 32, format));
    if (!band) return false;
    SDL_SetSurfaceBlendMode(picture, SDL_BLENDMODE_NONE);
    for (int y = 0; y < picture->h; y += band->h) {
        SDL_Rect rows = {0, y, picture->w, std::min(band->h, picture->h - y)};
        if (SDL_BlitSurface(picture, &rows, band.get(), nullptr) != 0) return false;
        if (SDL_UpdateTexture(texture, &rows, band->pixels, band->pitch) != 0) return false;
    }
    return true;
}

} // namespace

SurfaceHandle to_pixel_format(SDL_Surface* surface) {
    if (surface == nullptr) return {};
    return SurfaceHandle(SDL_ConvertSurfaceFormat(surface, PIXEL_FORMAT, 0));
}

SurfaceHandle load_picture(char const* path) {
    SurfaceHandle const loaded = decode(path);
    return to_pixel_format(loaded.get());
}

TextureHandle load_texture(SDL_Renderer* renderer, char const* path, int* w, int* h) {
    *w = *h = 0;
    SurfaceHandle const picture = decode(path);
    if (!picture) return {};
    TextureHandle texture(SDL_CreateTexture(renderer, texture_format(renderer, picture.get()),
                                            SDL_TEXTUREACCESS_STATIC, picture->w, picture->h));
    if (!texture || !upload(texture.get(), picture.get())) return {};
    SDL_SetTextureBlendMode(texture.get(),
                            has_alpha(picture.get()) ? SDL_BLENDMODE_BLEND : SDL_BLENDMODE_NONE);
    *w = picture->w;
    *h = picture->h;
    return texture;
}

SDL_Surface* downscale_box(SDL_Surface* source, int w, int h) {
    if (source == nullptr) return nullptr;
    SurfaceHandle out(SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, PIXEL_FORMAT));
    if (!out) return nullptr;
    PixelLock const source_lock(source);
    PixelLock const out_lock(out.get());
    if (!source_lock || !out_lock) return nullptr;

    double const step_x = static_cast<double>(source->w) / w;
    double const step_y = static_cast<double>(source->h) / h;
    for (int j = 0; j < h; ++j) {
        Span const rows = span_of(j, step_y, source->h);
        std::uint32_t* out_row = pixel_row(out.get(), j);
        for (int i = 0; i < w; ++i) {
            SDL_Color const color = average(sum_of(source, span_of(i, step_x, source->w), rows));
            out_row[i] = SDL_MapRGBA(out->format, color.r, color.g, color.b, color.a);
        }
    }
    return out.release();
}
