#include "audio/mp3.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

namespace {

constexpr int rate = 22050; // Hz, the game's own
using Samples = std::vector<std::int16_t>;

// What a piece or a sound has to fit, lengths in seconds and levels out of 32767.
struct Fit {
    char const* file;
    double shortest;
    double longest;
    double quietest; // RMS of the whole
    double loudest;
};

void PrintTo(Fit const& fit, std::ostream* out) {
    *out << fit.file;
}

constexpr Fit music[] = {
    {"Gallop Over Pine Hills -- game 1", 90, 180, 2500, 4000},
    {"Gallop Over Pine Hills -- game 2", 90, 180, 2500, 4000},
    {"Booting GEM Dreams", 90, 180, 2500, 4000},
    {"Relentless Grid", 90, 180, 2500, 4000},
    {"Twin Rivers C64", 90, 180, 2500, 4000},
    {"HiScore - Meadow Run Arcade 2", 60, 180, 2500, 4000},
};

constexpr Fit sounds[] = {
    {"hollowreed-car-door-shut-297266", 0.3, 0.6, 2000, 8000},
    {"emberworks-car-engine-372477", 1.5, 3.0, 3000, 9000},
    {"openclip_circle-goodresult-82807", 1.0, 1.8, 1500, 6000},
    {"tallycraft-crowd-cheering-314920", 8.0, 12.0, 2500, 6500},
    {"brightfold-exhilarating-electro-153282", 10.0, 15.5, 3000, 6500},
};

double rms(Samples const& samples, double from, double seconds) {
    auto const first = static_cast<std::size_t>(from * rate);
    auto const last = std::min(samples.size(), first + static_cast<std::size_t>(seconds * rate));
    double sum = 0;
    for (std::size_t i = first; i < last; ++i) {
        sum += static_cast<double>(samples[i]) * samples[i];
    }
    return last > first ? std::sqrt(sum / static_cast<double>(last - first)) : 0;
}

int peak(Samples const& samples) {
    int most = 0;
    for (int const sample : samples) {
        most = std::max(most, std::abs(sample));
    }
    return most;
}

// The step from sample to sample that only one in a thousand exceeds.
int usual_step(Samples const& samples) {
    std::vector<int> steps;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        steps.push_back(std::abs(samples[i] - samples[i - 1]));
    }
    auto const place = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() * 999 / 1000);
    std::nth_element(steps.begin(), place, steps.end());
    return *place;
}

Samples load(Fit const& fit, char const* folder) {
    std::string const path = std::string{BRINDLE_GAME_DIR "/"} + folder + fit.file + ".mp3";
    return decode_mp3_mono(path.c_str(), rate);
}

void expect_fits(Samples const& samples, Fit const& fit) {
    double const seconds = static_cast<double>(samples.size()) / rate;
    EXPECT_GE(seconds, fit.shortest);
    EXPECT_LE(seconds, fit.longest);
    EXPECT_GE(rms(samples, 0, seconds), fit.quietest);
    EXPECT_LE(rms(samples, 0, seconds), fit.loudest);
    EXPECT_LT(peak(samples), 32000);
}

class Music : public ::testing::TestWithParam<Fit> {};

TEST_P(Music, LoopsWithoutClickOrGap) {
    Samples const samples = load(GetParam(), "music/");
    ASSERT_GT(samples.size(), 2U);
    expect_fits(samples, GetParam());
    EXPECT_LE(std::abs(samples.front() - samples.back()), usual_step(samples));
    double const seconds = static_cast<double>(samples.size()) / rate;
    EXPECT_GT(rms(samples, seconds - 0.05, 0.05), 150) << "silence before the loop";
    EXPECT_GT(rms(samples, 0, 0.05), 150) << "silence after the loop";
}

TEST_P(Music, NeverFallsSilent) {
    Samples const samples = load(GetParam(), "music/");
    double const seconds = static_cast<double>(samples.size()) / rate;
    for (double from = 0; from + 1 <= seconds; from += 1) {
        EXPECT_GT(rms(samples, from, 1), 700) << "at " << from << " s";
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, Music, ::testing::ValuesIn(music));

class Sounds : public ::testing::TestWithParam<Fit> {};

// A sound slot has no envelope of its own: what begins or ends with a step is heard as a click.
TEST_P(Sounds, BeginSoonAndEndSoftly) {
    Samples const samples = load(GetParam(), "sounds/");
    ASSERT_FALSE(samples.empty());
    expect_fits(samples, GetParam());
    EXPECT_GT(rms(samples, 0, 0.15), 100) << "a late beginning";
    EXPECT_LT(std::abs(samples.front()), 400);
    EXPECT_LT(std::abs(samples.back()), 400);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Sounds, ::testing::ValuesIn(sounds));

// The game takes 2 s to fade the crowd from its sixth second: until then it has to cheer on.
TEST(Crowd, CheersUntilTheGameFadesIt) {
    Samples const samples = load(sounds[3], "sounds/");
    for (double from = 0.25; from < 8; from += 0.5) {
        EXPECT_GT(rms(samples, from, 0.5), 1500) << "at " << from << " s";
    }
}

} // namespace
