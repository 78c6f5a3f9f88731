// What the content's levels are measured with, against tones whose loudness is known.

#include "loudness/loudness.h"
#include "support/sound.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

constexpr int RATE = 22050;

Samples tone(double hz, double amplitude, double seconds) {
    return sine(hz, seconds, 32767.0 * amplitude, RATE);
}

} // namespace

TEST(Loudness, WeighsTonesLikeAnEarAndSeesPeaksBetweenSamples) {
    Loudness const middle = loudness_of(tone(997, 0.1, 3), RATE);
    EXPECT_NEAR(middle.integrated, -23.0, 0.1);
    EXPECT_NEAR(middle.momentary, -23.0, 0.1);
    EXPECT_NEAR(middle.true_peak, -20.0, 0.3);
    EXPECT_LT(loudness_of(tone(40, 0.1, 3), RATE).integrated, -25.0);
    EXPECT_GT(loudness_of(tone(5000, 0.1, 3), RATE).integrated, -20.5);
    // Four samples a wave, each 45 degrees from the crest: they reach -3 dB of a wave at -1.
    Samples const between = sine(RATE / 4.0, 3, 32767 * 0.891, RATE, std::numbers::pi / 4);
    EXPECT_NEAR(loudness_of(between, RATE).true_peak, -1.0, 0.4);
    // The gate leaves a long silence out of the whole, and the loudest 400 ms do not see it.
    Samples gapped = tone(997, 0.1, 1);
    gapped.resize(static_cast<std::size_t>(20 * RATE));
    EXPECT_NEAR(loudness_of(gapped, RATE).integrated, -23.3, 0.5);
    EXPECT_NEAR(loudness_of(gapped, RATE).momentary, -23.0, 0.1);
    EXPECT_EQ(loudness_of({}, RATE).integrated, -100.0);
}
