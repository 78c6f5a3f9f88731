#pragma once

// A PNG of opaque palette pixels, read from the top a row at a time. Our track pictures are of this
// kind, 20 million pixels each: whoever reduces or uploads one need not hold all of it in memory.

#include <SDL.h>

#include <cstdint>
#include <memory>
#include <vector>

class PalettePng {
public:
    // Opens the file and reads its head; false if it is anything but a PNG of 8-bit palette
    // pixels, opaque and not interlaced, or claims more than MAX_PICTURE_PIXELS.
    explicit PalettePng(char const* path);
    explicit operator bool() const { return decoder_ != nullptr; }

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    // The next row, each pixel looked up in `colors`, to `out`, which has room for it. False if the
    // file is broken there, with SDL_GetError set; all that came before it is good.
    bool read_row(std::vector<std::uint32_t> const& colors, std::uint32_t* out);

    // The palette in a format of 4 bytes a pixel: 256 entries, 0 beyond the file's own.
    [[nodiscard]] std::vector<std::uint32_t> colors(std::uint32_t format) const;

private:
    struct Decoder;
    struct DecoderDelete {
        void operator()(Decoder* decoder) const;
    };

    std::unique_ptr<Decoder, DecoderDelete> decoder_;
    std::vector<std::uint8_t> indices_; // of one row
    int width_ = 0;
    int height_ = 0;
};
