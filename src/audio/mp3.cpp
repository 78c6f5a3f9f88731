#include "audio/mp3.h"

#include <mpg123.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace {

constexpr std::size_t CHUNK_BYTES = 16384;

// A broken header can promise any length: room for 12 minutes at 22,050 Hz is made at most, and
// the array grows by itself beyond.
constexpr off_t MAX_RESERVED_SAMPLES = off_t{1} << 24;

struct LibraryExit {
    void operator()(void const* /*token*/) const { mpg123_exit(); }
};
struct DecoderDelete {
    void operator()(mpg123_handle* decoder) const { mpg123_delete(decoder); }
};
// Not null while the library is initialised; the address itself means nothing.
using Library = std::unique_ptr<void const, LibraryExit>;
using Decoder = std::unique_ptr<mpg123_handle, DecoderDelete>;

Library init_library() {
    static constexpr char token = 0;
    if (mpg123_init() == MPG123_OK) return Library(&token);
    std::fputs("mpg123_init failed\n", stderr);
    return {};
}

Decoder make_decoder() {
    int error = MPG123_OK;
    Decoder decoder(mpg123_new(nullptr, &error));
    if (!decoder) std::fprintf(stderr, "mpg123_new failed: %s\n", mpg123_plain_strerror(error));
    return decoder;
}

// One output format whatever comes in. The library's own remarks stay off the console, which gets
// one line of ours instead.
void fix_output_format(mpg123_handle* decoder, int rate) {
    mpg123_param2(decoder, MPG123_ADD_FLAGS, MPG123_QUIET, 0.0);
    mpg123_format_none(decoder);
    mpg123_format(decoder, rate, MPG123_MONO, MPG123_ENC_SIGNED_16);
    mpg123_param2(decoder, MPG123_FORCE_RATE, rate, 0.0);
}

void reserve_expected(std::vector<std::int16_t>& samples, mpg123_handle* decoder) {
    off_t const expected = std::clamp(mpg123_length(decoder), off_t{0}, MAX_RESERVED_SAMPLES);
    samples.reserve(static_cast<std::size_t>(expected));
}

std::vector<std::int16_t> read_all(mpg123_handle* decoder, char const* path) {
    std::vector<std::int16_t> samples;
    reserve_expected(samples, decoder);
    std::array<std::int16_t, CHUNK_BYTES / sizeof(std::int16_t)> chunk; // NOLINT: filled by read
    int result = MPG123_OK;
    while (result == MPG123_OK || result == MPG123_NEW_FORMAT) {
        std::size_t bytes = 0;
        result = mpg123_read(decoder, chunk.data(), CHUNK_BYTES, &bytes);
        std::size_t const whole_samples = bytes / sizeof(std::int16_t);
        samples.insert(samples.end(), chunk.data(), chunk.data() + whole_samples);
    }
    if (result != MPG123_DONE) {
        std::fprintf(stderr, "mpg123_read(%s) error: %s\n", path, mpg123_strerror(decoder));
    }
    mpg123_close(decoder);
    return samples;
}

} // namespace

std::vector<std::int16_t> decode_mp3_mono(char const* path, int rate) {
    Library const library = init_library();
    if (!library) return {};
    Decoder const decoder = make_decoder();
    if (!decoder) return {};
    fix_output_format(decoder.get(), rate);
    if (mpg123_open(decoder.get(), path) != MPG123_OK) {
        std::fprintf(stderr, "mpg123_open(%s) failed: %s\n", path, mpg123_strerror(decoder.get()));
        return {};
    }
    return read_all(decoder.get(), path);
}
