#pragma once

// MP3 decoding with libmpg123, which also resamples and mixes down: whatever the file holds, the
// result has the device's rate and one channel. All on the game thread.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct mpg123_handle_struct; // the library's decoder

// A file being decoded, piece by piece. Says nothing itself.
class Mp3Decoding {
public:
    // Mono samples at `rate` Hz are wanted.
    Mp3Decoding(std::string path, int rate);

    // Decodes the next 16 KiB of samples, a third of a second of sound in a fifth of a millisecond.
    // False if that was the end, or there is none to come.
    bool go_on();

    std::vector<std::int16_t> samples; // so far
    std::string trouble;               // what went wrong, as one line; empty for nothing

private:
    struct Free {
        void operator()(mpg123_handle_struct* decoder) const;
    };
    void end(std::string why);

    std::string path_;
    std::unique_ptr<mpg123_handle_struct, Free> decoder_; // null when there is no more to come
};

// The whole file as mono samples at `rate` Hz. Empty on failure, with one line on standard error;
// a file that breaks off in the middle gives that line too, and what was decoded until then.
std::vector<std::int16_t> decode_mp3_mono(char const* path, int rate);
