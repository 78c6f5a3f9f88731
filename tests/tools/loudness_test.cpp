// What the content's levels are measured with, against tones whose loudness is known.

#include "loudness/loudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

constexpr int RATE = 22050;
constexpr double PI = 3.14159265358979;

std::vector<std::int16_t> tone(double hz, double amplitude, double phase, double seconds) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(seconds * RATE));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        double const angle = 2.0 * PI * hz * static_cast<double>(i) / RATE + phase;
        samples[i] = static_cast<std::int16_t>(std::lround(32767.0 * amplitude * std::sin(angle)));
    }
    return samples;
}

} // namespace

TEST(Loudness, WeighsTonesLikeAnEarAndSeesPeaksBetweenSamples) {
    Loudness const middle = loudness_of(tone(997, 0.1, 0, 3), RATE);
    EXPECT_NEAR(middle.integrated, -23.0, 0.1);
    EXPECT_NEAR(middle.momentary, -23.0, 0.1);
    EXPECT_NEAR(middle.true_peak, -20.0, 0.3);
    EXPECT_LT(loudness_of(tone(40, 0.1, 0, 3), RATE).integrated, -25.0);
    EXPECT_GT(loudness_of(tone(5000, 0.1, 0, 3), RATE).integrated, -20.5);
    // Four samples a wave, each 45 degrees from the crest: they reach -3 dB of a wave at -1.
    EXPECT_NEAR(loudness_of(tone(RATE / 4.0, 0.891, PI / 4, 3), RATE).true_peak, -1.0, 0.4);
    // The gate leaves a long silence out of the whole, and the loudest 400 ms do not see it.
    std::vector<std::int16_t> gapped = tone(997, 0.1, 0, 1);
    gapped.resize(static_cast<std::size_t>(20 * RATE));
    EXPECT_NEAR(loudness_of(gapped, RATE).integrated, -23.3, 0.5);
    EXPECT_NEAR(loudness_of(gapped, RATE).momentary, -23.0, 0.1);
    EXPECT_EQ(loudness_of({}, RATE).integrated, -100.0);
}
