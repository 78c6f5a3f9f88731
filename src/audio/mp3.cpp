#include "audio/mp3.h"

#include <mpg123.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace {

constexpr std::size_t CHUNK_BYTES = 16384;

// A broken header can promise any length: room for 12 minutes at 22,050 Hz is made at most, and
// the array grows by itself beyond.
constexpr off_t MAX_RESERVED_SAMPLES = off_t{1} << 24;

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

} // namespace

void Mp3Decoding::Free::operator()(mpg123_handle_struct* decoder) const {
    mpg123_close(decoder);
    mpg123_delete(decoder);
    mpg123_exit();
}

Mp3Decoding::Mp3Decoding(std::string path, int rate) : path_(std::move(path)) {
    if (mpg123_init() != MPG123_OK) {
        trouble = "mpg123_init failed";
        return;
    }
    int error = MPG123_OK;
    decoder_.reset(mpg123_new(nullptr, &error));
    if (!decoder_) {
        trouble = std::string("mpg123_new failed: ") + mpg123_plain_strerror(error);
        mpg123_exit();
        return;
    }
    fix_output_format(decoder_.get(), rate);
    if (mpg123_open(decoder_.get(), path_.c_str()) == MPG123_OK) {
        reserve_expected(samples, decoder_.get());
    } else {
        end("mpg123_open(" + path_ + ") failed: " + mpg123_strerror(decoder_.get()));
    }
}

void Mp3Decoding::end(std::string why) {
    trouble = std::move(why);
    decoder_.reset();
}

bool Mp3Decoding::go_on() {
    if (!decoder_) return false;
    std::array<std::int16_t, CHUNK_BYTES / sizeof(std::int16_t)> chunk; // NOLINT: filled by read
    std::size_t bytes = 0;
    int const result = mpg123_read(decoder_.get(), chunk.data(), CHUNK_BYTES, &bytes);
    std::size_t const whole_samples = bytes / sizeof(std::int16_t);
    samples.insert(samples.end(), chunk.data(), chunk.data() + whole_samples);
    if (result == MPG123_OK || result == MPG123_NEW_FORMAT) return true;
    bool const done = result == MPG123_DONE;
    end(done ? "" : "mpg123_read(" + path_ + ") error: " + mpg123_strerror(decoder_.get()));
    return false;
}

std::vector<std::int16_t> decode_mp3_mono(char const* path, int rate) {
    Mp3Decoding decoding(path, rate);
    while (decoding.go_on()) {
    }
    if (!decoding.trouble.empty()) std::fprintf(stderr, "%s\n", decoding.trouble.c_str());
    return std::move(decoding.samples);
}
