#include "audio/mp3.h"
#include "content_check/checks.h"
#include "content_check/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int RATE = 22050; // Hz: what the files are made at, so that nothing is resampled

// Lengths in seconds; levels are RMS over the whole file, of 32767.
struct WantedSound {
    char const* file;
    double min_s;
    double max_s;
    double min_rms;
    double max_rms;
};

// Music lies under engines of 1000 to 1700 at 0.3 of its level; the pieces are alike in loudness.
constexpr std::array<WantedSound, 11> WANTED_SOUNDS{{
    {"music/Gallop Over Pine Hills -- game 1.mp3", 90, 300, 2200, 4500},
    {"music/Gallop Over Pine Hills -- game 2.mp3", 90, 300, 2200, 4500},
    {"music/Booting GEM Dreams.mp3", 90, 300, 2200, 4500},
    {"music/Relentless Grid.mp3", 90, 300, 2200, 4500},
    {"music/Twin Rivers C64.mp3", 90, 300, 2200, 4500},
    {"music/HiScore - Meadow Run Arcade 2.mp3", 60, 300, 2200, 4500},
    {"sounds/hollowreed-car-door-shut-297266.mp3", 0.2, 1.0, 1500, 9000},
    {"sounds/emberworks-car-engine-372477.mp3", 1.5, 4.0, 1500, 9000},
    {"sounds/openclip_circle-goodresult-82807.mp3", 0.8, 3.0, 1500, 9000},
    {"sounds/tallycraft-crowd-cheering-314920.mp3", 7.5, 20.0, 1500, 9000},
    {"sounds/brightfold-exhilarating-electro-153282.mp3", 8.0, 30.0, 1500, 9000},
}};

struct Level {
    double seconds = 0.0;
    double rms = 0.0;
    int peak = 0;
};

Level measure(std::vector<std::int16_t> const& samples) {
    Level level;
    double sum = 0.0;
    for (int const sample : samples) {
        sum += static_cast<double>(sample) * sample;
        level.peak = std::max(level.peak, std::abs(sample));
    }
    auto const count = static_cast<double>(samples.size());
    level.seconds = count / RATE;
    level.rms = samples.empty() ? 0.0 : std::sqrt(sum / count);
    return level;
}

} // namespace

void check_audio(Report& report) {
    for (WantedSound const& wanted : WANTED_SOUNDS) {
        Level const level = measure(decode_mp3_mono(wanted.file, RATE));
        bool const good = level.seconds >= wanted.min_s && level.seconds <= wanted.max_s &&
                          level.rms >= wanted.min_rms && level.rms <= wanted.max_rms &&
                          level.peak < 32767;
        std::array<char, 96> found{};
        std::snprintf(found.data(), found.size(), "%.2f s, RMS %.0f, peak %d", level.seconds,
                      level.rms, level.peak);
        report.add(good, wanted.file, found.data());
    }
}
