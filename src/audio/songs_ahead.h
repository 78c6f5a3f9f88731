#pragma once

// Songs that are known to come. Decoding one takes as long as several frames, so they are decoded
// before they are due, a little in each frame: no frame is longer for it than by a millisecond.

#include "audio/mp3.h"

#include <string>
#include <vector>

class SongsAhead {
public:
    // From now on these are expected, the likeliest first, at `rate` Hz; all others are let go. A
    // song of a minute takes 2.6 MB.
    void expect(std::vector<std::string> const& paths, int rate);
    // Goes on with the first that is not whole yet.
    void decode_some();
    // The song, decoded to its end by now, which is no longer expected. Empty if it was not, or is
    // not to be had without trouble.
    std::vector<std::int16_t> take(std::string const& path);

private:
    struct Song {
        std::string path;
        Mp3Decoding decoding;
        bool whole = false; // no more to come
    };
    static void go_on(Song& song);

    std::vector<Song> songs_;
};
