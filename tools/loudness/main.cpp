// Says how loud sound is.
//   loudness FILE.raw [FROM SECONDS]
// FILE holds 16-bit samples, little-endian, at the game's rate. Three figures on one line: LUFS
// over the whole or the chosen piece, LUFS of its loudest 400 ms, dBTP.

#include "loudness/loudness.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <string>
#include <vector>

namespace {

constexpr int RATE = 22050; // Hz

std::vector<std::int16_t> raw_samples(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(file), {}};
    std::vector<std::int16_t> samples(bytes.size() / 2);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        auto const low = static_cast<unsigned char>(bytes[2 * i]);
        auto const high = static_cast<unsigned char>(bytes[2 * i + 1]);
        samples[i] = static_cast<std::int16_t>(low | high << 8);
    }
    return samples;
}

std::size_t sample_at(double seconds, std::size_t last) {
    return std::min(last, static_cast<std::size_t>(std::max(0.0, seconds) * RATE));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 4) {
        std::fprintf(stderr, "usage: loudness FILE.raw [FROM SECONDS]\n");
        return 2;
    }
    auto const samples = raw_samples(argv[1]);
    std::span<std::int16_t const> piece = samples;
    if (argc == 4) {
        piece = piece.subspan(sample_at(std::atof(argv[2]), piece.size()));
        piece = piece.first(sample_at(std::atof(argv[3]), piece.size()));
    }
    if (piece.empty()) {
        std::fprintf(stderr, "%s: nothing to measure\n", argv[1]);
        return 1;
    }
    Loudness const found = loudness_of(piece, RATE);
    std::printf("%.2f %.2f %.2f\n", found.integrated, found.momentary, found.true_peak);
}
