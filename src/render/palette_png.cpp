#include "render/palette_png.h"

#include "platform/files.h"
#include "render/image.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <png.h>

// libpng leaves a function of ours by longjmp when a file is broken. The functions that call it
// are therefore small and hold nothing that would have to be destroyed on the way out.

struct PalettePng::Decoder {
    std::FILE* file = nullptr;
    png_structp png = nullptr;
    png_infop info = nullptr;
};

namespace {

constexpr std::size_t PALETTE_SIZE = 256;

[[noreturn]] void leave_silently(png_structp png, png_const_charp /*message*/) {
    png_longjmp(png, 1);
}
void ignore_warning(png_structp /*png*/, png_const_charp /*message*/) {}

bool is_opaque_palette(png_structp png, png_infop info) {
    return png_get_color_type(png, info) == PNG_COLOR_TYPE_PALETTE &&
           png_get_bit_depth(png, info) == 8 &&
           png_get_interlace_type(png, info) == PNG_INTERLACE_NONE &&
           png_get_valid(png, info, PNG_INFO_tRNS) == 0;
}

bool read_head(png_structp png, png_infop info, std::FILE* file) {
    if (setjmp(png_jmpbuf(png)) != 0) return false; // NOLINT: libpng's way to tell
    png_init_io(png, file);
    png_read_info(png, info);
    return is_opaque_palette(png, info);
}

bool read_indices(png_structp png, std::uint8_t* indices) {
    if (setjmp(png_jmpbuf(png)) != 0) return false; // NOLINT: libpng's way to tell
    png_read_row(png, indices, nullptr);
    return true;
}

} // namespace

void PalettePng::DecoderDelete::operator()(Decoder* decoder) const {
    png_destroy_read_struct(&decoder->png, &decoder->info, nullptr);
    if (decoder->file != nullptr) std::fclose(decoder->file);
    delete decoder;
}

PalettePng::PalettePng(char const* path) {
    std::unique_ptr<Decoder, DecoderDelete> decoder(new Decoder);
    decoder->file = open_file(path, "rb");
    if (decoder->file == nullptr) return;
    decoder->png =
        png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave_silently, ignore_warning);
    if (decoder->png == nullptr) return;
    decoder->info = png_create_info_struct(decoder->png);
    if (decoder->info == nullptr) return;
    if (!read_head(decoder->png, decoder->info, decoder->file)) return;
    std::int64_t const w = png_get_image_width(decoder->png, decoder->info);
    std::int64_t const h = png_get_image_height(decoder->png, decoder->info);
    if (w * h > MAX_PICTURE_PIXELS) return;
    width_ = static_cast<int>(w);
    height_ = static_cast<int>(h);
    indices_.resize(static_cast<std::size_t>(w));
    decoder_ = std::move(decoder);
}

bool PalettePng::read_row(std::vector<std::uint32_t> const& colors, std::uint32_t* out) {
    if (!read_indices(decoder_->png, indices_.data())) {
        SDL_SetError("the PNG is damaged");
        return false;
    }
    std::transform(indices_.begin(), indices_.end(), out,
                   [table = colors.data()](std::uint8_t index) { return table[index]; });
    return true;
}

std::vector<std::uint32_t> PalettePng::colors(std::uint32_t format) const {
    std::vector<std::uint32_t> table(PALETTE_SIZE, 0);
    png_colorp palette = nullptr;
    int count = 0;
    png_get_PLTE(decoder_->png, decoder_->info, &palette, &count);
    SDL_PixelFormat* const mapped = SDL_AllocFormat(format);
    if (mapped == nullptr) return table;
    std::transform(palette, palette + count, table.begin(), [mapped](png_color const& color) {
        return SDL_MapRGB(mapped, color.red, color.green, color.blue);
    });
    SDL_FreeFormat(mapped);
    return table;
}
