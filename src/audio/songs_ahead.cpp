#include "audio/songs_ahead.h"

#include "platform/shipped_file.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int PIECES_A_FRAME = 2;
// A player's own may be hours long: more than this many samples, 5 minutes, wait until they are
// due.
constexpr std::size_t LONGEST = 6'615'000;

} // namespace

void SongsAhead::go_on(Song& song) {
    song.whole = !song.decoding.go_on();
    if (song.decoding.samples.capacity() <= LONGEST && song.decoding.trouble.empty()) return;
    song.decoding.samples = {};
    song.whole = true;
}

void SongsAhead::expect(std::vector<std::string> const& paths, int rate) {
    std::vector<Song> expected;
    for (std::string const& path : paths) {
        auto const known = std::find_if(songs_.begin(), songs_.end(),
                                        [&](Song const& song) { return song.path == path; });
        if (known != songs_.end()) {
            expected.push_back(std::move(*known));
        } else if (is_at_hand(path)) {
            expected.push_back({path, Mp3Decoding(path, rate)});
        }
    }
    songs_ = std::move(expected);
}

void SongsAhead::decode_some() {
    for (int piece = 0; piece < PIECES_A_FRAME; ++piece) {
        auto const next = std::find_if(songs_.begin(), songs_.end(),
                                       [](Song const& song) { return !song.whole; });
        if (next == songs_.end()) return;
        go_on(*next);
    }
}

std::vector<std::int16_t> SongsAhead::take(std::string const& path) {
    auto const found = std::find_if(songs_.begin(), songs_.end(),
                                    [&](Song const& song) { return song.path == path; });
    if (found == songs_.end()) return {};
    while (!found->whole) go_on(*found);
    std::vector<std::int16_t> samples = std::move(found->decoding.samples);
    songs_.erase(found);
    return samples;
}
