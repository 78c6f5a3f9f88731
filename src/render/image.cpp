#include "render/image.h"

#include "render/box_reducer.h"
#include "render/palette_png.h"
#include "render/picture_size.h"

#include <SDL_image.h>

#include <algorithm>
#include <vector>

namespace {

constexpr int READ_ROWS = 64; // 1 MB of a picture 4,000 pixels wide

std::uint32_t unpacked_pixel(std::uint32_t pixel, SDL_PixelFormat const* format) {
    SDL_Color color{};
    SDL_GetRGBA(pixel, format, &color.r, &color.g, &color.b, &color.a);
    return color.r | std::uint32_t{color.g} << 8U | std::uint32_t{color.b} << 16U |
           std::uint32_t{color.a} << 24U;
}

// The rest of the file, reduced as it is read; null if it is broken.
SurfaceHandle read_reduced(PalettePng& rows, SDL_Point size) {
    SurfaceHandle out(SDL_CreateRGBSurfaceWithFormat(0, size.x, size.y, 32, PIXEL_FORMAT));
    if (!out) return nullptr;
    std::vector<std::uint32_t> const colors = rows.colors(PIXEL_FORMAT);
    std::vector<std::uint32_t> row(static_cast<std::size_t>(rows.width()));
    BoxReducer reducer(rows.width(), rows.height(), out.get());
    for (int y = 0; y < rows.height(); ++y) {
        if (!rows.read_row(colors, row.data())) return nullptr;
        reducer.add_row(row.data());
    }
    return out;
}

// Each of these sets the error if the answer is no.
bool can_be_opened(char const* path) {
    SDL_RWops* const file = SDL_RWFromFile(path, "rb");
    return file != nullptr && SDL_RWclose(file) == 0;
}

bool is_picture_of_sane_size(char const* path) {
    SDL_Point const size = picture_size(path);
    if (size.x < 1 || size.y < 1) {
        SDL_SetError("%s is no PNG, JPEG or BMP picture", path);
        return false;
    }
    if (std::int64_t{size.x} * size.y > MAX_PICTURE_PIXELS) {
        SDL_SetError("%s is too large a picture: %d x %d", path, size.x, size.y);
        return false;
    }
    return true;
}

// The picture in whatever format its file has; null if it is none or claims to be too large.
SurfaceHandle decode(char const* path) {
    if (!can_be_opened(path) || !is_picture_of_sane_size(path)) return {};
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

// `own` if the renderer takes it, else the renderer's first of packed pixels that is alike in
// having alpha or none.
std::uint32_t texture_format(SDL_Renderer* renderer, std::uint32_t own, bool alpha) {
    SDL_RendererInfo info{};
    SDL_GetRendererInfo(renderer, &info);
    auto const* const first = info.texture_formats;
    auto const* const last = first + info.num_texture_formats;
    if (std::find(first, last, own) != last) return own;
    auto const* const alike = std::find_if(first, last, [alpha](std::uint32_t format) {
        return !SDL_ISPIXELFORMAT_FOURCC(format) && SDL_BYTESPERPIXEL(format) == 4 &&
               SDL_ISPIXELFORMAT_ALPHA(format) == alpha;
    });
    return alike != last ? *alike : PIXEL_FORMAT;
}

// The rest of the file into a texture of its size, a band of rows at a time.
bool upload_rows(SDL_Texture* texture, PalettePng& rows) {
    std::uint32_t format = 0;
    SDL_QueryTexture(texture, &format, nullptr, nullptr, nullptr);
    std::vector<std::uint32_t> const colors = rows.colors(format);
    auto const w = static_cast<std::size_t>(rows.width());
    std::vector<std::uint32_t> band(w * READ_ROWS);
    for (int y = 0; y < rows.height(); y += READ_ROWS) {
        SDL_Rect const place = {0, y, rows.width(), std::min(READ_ROWS, rows.height() - y)};
        for (int row = 0; row < place.h; ++row) {
            if (!rows.read_row(colors, &band[w * static_cast<std::size_t>(row)])) return false;
        }
        if (SDL_UpdateTexture(texture, &place, band.data(), rows.width() * 4) != 0) return false;
    }
    return true;
}

TextureHandle texture_of_rows(SDL_Renderer* renderer, PalettePng& rows) {
    std::uint32_t const format = texture_format(renderer, SDL_PIXELFORMAT_INDEX8, false);
    TextureHandle texture(
        SDL_CreateTexture(renderer, format, SDL_TEXTUREACCESS_STATIC, rows.width(), rows.height()));
    if (!texture || !upload_rows(texture.get(), rows)) return {};
    SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_NONE);
    return texture;
}

// Copies `picture` into a texture of its size, converting a band of rows at a time if need be.
bool upload(SDL_Texture* texture, SDL_Surface* picture) {
    std::uint32_t format = 0;
    SDL_QueryTexture(texture, &format, nullptr, nullptr, nullptr);
    if (format == picture->format->format) {
        return SDL_UpdateTexture(texture, nullptr, picture->pixels, picture->pitch) == 0;
    }
    SurfaceHandle const band(
        SDL_CreateRGBSurfaceWithFormat(0, picture->w, std::min(READ_ROWS, picture->h), 32, format));
    if (!band) return false;
    SDL_SetSurfaceBlendMode(picture, SDL_BLENDMODE_NONE);
    for (int y = 0; y < picture->h; y += band->h) {
        SDL_Rect rows = {0, y, picture->w, std::min(band->h, picture->h - y)};
        if (SDL_BlitSurface(picture, &rows, band.get(), nullptr) != 0) return false;
        if (SDL_UpdateTexture(texture, &rows, band->pixels, band->pitch) != 0) return false;
    }
    return true;
}

TextureHandle texture_of_any(SDL_Renderer* renderer, char const* path) {
    SurfaceHandle const picture = decode(path);
    if (!picture) return {};
    bool const alpha = has_alpha(picture.get());
    std::uint32_t const format = texture_format(renderer, picture->format->format, alpha);
    TextureHandle texture(
        SDL_CreateTexture(renderer, format, SDL_TEXTUREACCESS_STATIC, picture->w, picture->h));
    if (!texture || !upload(texture.get(), picture.get())) return {};
    SDL_SetTextureBlendMode(texture.get(), alpha ? SDL_BLENDMODE_BLEND : SDL_BLENDMODE_NONE);
    return texture;
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
    PalettePng rows(path);
    TextureHandle texture = rows ? texture_of_rows(renderer, rows) : texture_of_any(renderer, path);
    *w = *h = 0;
    if (texture) SDL_QueryTexture(texture.get(), nullptr, nullptr, w, h);
    return texture;
}

SurfaceHandle load_reduced(char const* path, SizeChoice const& choose) {
    PalettePng rows(path);
    if (rows) return read_reduced(rows, choose({rows.width(), rows.height()}));
    SurfaceHandle picture = load_picture(path);
    if (!picture) return nullptr;
    SDL_Point const size = choose({picture->w, picture->h});
    if (size.x == picture->w && size.y == picture->h) return picture;
    return SurfaceHandle(downscale_box(picture.get(), size.x, size.y));
}

SDL_Surface* downscale_box(SDL_Surface* source, int w, int h) {
    if (source == nullptr) return nullptr;
    SurfaceHandle out(SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, PIXEL_FORMAT));
    if (!out) return nullptr;
    PixelLock const source_lock(source);
    PixelLock const out_lock(out.get());
    if (!source_lock || !out_lock) return nullptr;

    BoxReducer reducer(source->w, source->h, out.get());
    std::vector<std::uint32_t> unpacked(static_cast<std::size_t>(source->w));
    for (int y = 0; y < source->h; ++y) {
        std::uint32_t const* row = pixel_row(source, y);
        if (source->format->format != PIXEL_FORMAT) {
            std::transform(row, row + source->w, unpacked.begin(), [source](std::uint32_t pixel) {
                return unpacked_pixel(pixel, source->format);
            });
            row = unpacked.data();
        }
        reducer.add_row(row);
    }
    return out.release();
}
