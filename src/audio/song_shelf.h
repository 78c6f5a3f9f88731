#pragma once

// Songs that have been decoded, and those that are to be before anyone asks for them. Decoding a
// song takes as long as three frames: it is done a little in each frame instead. A song stays on
// the shelf, 2 to 3 MB of samples each.

#include "audio/mp3.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

using Samples = std::vector<std::int16_t>;

class SongShelf {
public:
    // Null if it is not there yet.
    [[nodiscard]] Samples const* find(std::string const& path) const;
    // Empty songs are not kept: the next try may do better.
    void put(std::string const& path, Samples const& song);
    // Wants a song that will come; a file that is missing is not missed before its time.
    void want(std::string const& path);
    // A third of a millisecond or so of decoding, as long as anything is wanted.
    void work(int rate);

private:
    std::map<std::string, Samples> songs_;
    std::deque<std::string> wanted_;
    std::unique_ptr<Mp3Reader> reader_; // of the first that is wanted
};
