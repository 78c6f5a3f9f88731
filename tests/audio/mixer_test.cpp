// What comes out of the mixer, measured: pitch, level, length and shape of each sound.

#include "audio/audio.h"
#include "support/sound.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using testing::Each;
using testing::ElementsAre;

constexpr int MIX_RATE = 22050;

// Mixes in the device's buffers of 1024 samples.
Samples mix(Audio& audio, int count) {
    Samples out(static_cast<std::size_t>(count), 12345);
    for (int done = 0; done < count; done += 1024) {
        audio.mix(out.data() + done, std::min(1024, count - done));
    }
    return out;
}

// The first car on the road at `speed`; the second is there but turned down.
void race(Audio& audio, float speed) {
    audio.car_sound_active = true;
    audio.car_feed[0].speed = speed;
    audio.car_feed[1].volume = 0.0F;
}

// What `change` adds to the sound of a car, with all else and the noise the same.
template <typename Change>
Samples added_by(float speed, Change change, bool gas = false) {
    Audio plain;
    Audio changed;
    for (Audio* audio : {&plain, &changed}) {
        race(*audio, speed);
        audio->car_feed[0].gas = gas;
    }
    change(changed.car_feed[0]);
    Samples result = mix(changed, 2 * MIX_RATE);
    Samples const without = mix(plain, 2 * MIX_RATE);
    std::transform(result.begin(), result.end(), without.begin(), result.begin(), std::minus<>());
    return result;
}

std::vector<std::size_t> upward_crossings(Samples const& samples) {
    std::vector<std::size_t> found;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (samples[i - 1] < 0 && samples[i] >= 0) found.push_back(i);
    }
    return found;
}

TEST(Mixer, EngineIsAWobblingToneOf81HzAtSpeed03) {
    Audio audio;
    race(audio, 0.3F);
    Samples const sound = mix(audio, 10 * MIX_RATE);
    std::vector<std::size_t> const crossings = upward_crossings(sound);
    EXPECT_NEAR(static_cast<double>(crossings.size()), 810, 2);
    // Two crossings make a period of the lower saw, 40.5 Hz, which wobbles by 3 %.
    std::vector<double> hz;
    for (std::size_t i = 2; i < crossings.size(); i += 2) {
        hz.push_back(MIX_RATE / static_cast<double>(crossings[i] - crossings[i - 2]));
    }
    EXPECT_NEAR(*std::max_element(hz.begin(), hz.end()), 40.5 * 1.03, 0.1);
    EXPECT_NEAR(*std::min_element(hz.begin(), hz.end()), 40.5 * 0.97, 0.1);
    // The harmonics of both saws, summed through the low-pass, have an rms of 0.4771.
    EXPECT_NEAR(rms(sound) / (1662.5 / 2), 0.4771, 0.003);
}

TEST(Mixer, EngineGetsLouderWithSpeedAndIgnoresItsSign) {
    Audio still;
    Audio fast;
    Audio reversing;
    race(still, 0.0F);
    race(fast, 1.0F);
    race(reversing, -1.0F);
    Samples const forwards = mix(fast, MIX_RATE);
    // Three and a half times the level, of which the low-pass takes more from the higher tone.
    EXPECT_NEAR(rms(forwards) / rms(mix(still, MIX_RATE)), 3.252, 0.03);
    EXPECT_EQ(forwards, mix(reversing, MIX_RATE));
}

TEST(Mixer, TyresHissBySpeedAndGasWhenTheCarSkids) {
    auto const skid = [](CarFeed& feed) { feed.skidding = true; };
    EXPECT_THAT(added_by(0.0F, skid), Each(0));
    // The rms of white noise through a one-pole filter, mixed with some of itself.
    EXPECT_NEAR(rms(added_by(1.0F, skid)), 1400 * 0.15344 / 2, 4);
    EXPECT_NEAR(rms(added_by(0.5F, skid, true)), 1050 * 0.3561 / 2, 5);
}

TEST(Mixer, KerbRumblesIn32BurstsASecondLouderWithSpeed) {
    auto const kerb = [](CarFeed& feed) { feed.rumble = 0.6F; };
    Samples const slow = added_by(0.0F, kerb);
    Samples const fast = added_by(0.3F, kerb);
    EXPECT_NEAR(rms(fast) / rms(slow), 1995.0 / 1050.0, 0.03);
    Samples loudness(fast.size());
    std::transform(fast.begin(), fast.end(), loudness.begin(), [](int x) { return std::abs(x); });
    for (double const other : {20.0, 27.0, 37.0, 45.0}) {
        EXPECT_GT(level_at(loudness, 32, MIX_RATE), 4 * level_at(loudness, other, MIX_RATE))
            << other;
    }
}

TEST(Mixer, WallThumpRingsOutWithoutARaceAndRestartsAtEachHit) {
    Audio full;
    Audio half;
    full.request_wall_hit(0, 1.0F);
    half.request_wall_hit(0, 0.5F);
    Samples const loud = mix(full, 5700);
    Samples const soft = mix(half, 5700);
    EXPECT_GT(peak(loud), 200);
    for (std::size_t i = 0; i < loud.size(); ++i) EXPECT_NEAR(loud[i], 2 * soft[i], 2) << i;
    EXPECT_GT(full.car_synth[0].wall_env, 0.001F);
    EXPECT_THAT(mix(full, 2000), Each(0)) << "over after 0.26 s";
    full.request_wall_hit(0, 1.0F);
    mix(full, 100);
    full.request_wall_hit(0, 0.2F);
    full.mix(nullptr, 0);
    EXPECT_FLOAT_EQ(full.car_synth[0].wall_env, 0.2F);
}

TEST(Mixer, RaceThatIsOffIsSilentWhileItsOscillatorsRun) {
    Audio audio;
    race(audio, 1.0F);
    audio.car_feed[0].skidding = true;
    audio.car_feed[0].rumble = 1.0F;
    audio.car_sound_enabled = false;
    EXPECT_THAT(mix(audio, 3000), Each(0));
    EXPECT_NE(audio.car_synth[0].saw_phase, 0.0);
    EXPECT_NE(audio.car_synth[0].noise_filter, 0.0F);
    audio.car_sound_enabled = true;
    EXPECT_GT(rms(mix(audio, 3000)), 100);
    audio.car_feed[0].volume = 0.0F;
    EXPECT_THAT(mix(audio, 3000), Each(0)) << "a car that has faded out";
}

TEST(Mixer, BeepHasItsPitchLevelLengthAndRamps) {
    Audio audio;
    audio.request_beep(880.0F, 0.5F, 0.5F);
    Samples const tone = mix(audio, MIX_RATE);
    EXPECT_NEAR(level_at(std::span(tone).subspan(2205, 6615), 880, MIX_RATE), 4500, 5);
    EXPECT_THAT(std::span(tone).subspan(11025), Each(0));
    // At a quarter of the rate every other sample is a crest, and shows the envelope itself.
    audio.request_beep(MIX_RATE / 4.0F, 0.2F, 1.0F);
    Samples const ramps = mix(audio, 4410);
    for (auto const& [at, share] : {std::pair{55UL, 55.0 / 110},
                                    {111UL, 1.0},
                                    {3967UL, 1.0},
                                    {4201UL, 209.0 / 441},
                                    {4409UL, 1.0 / 441}}) {
        EXPECT_NEAR(std::abs(ramps[at]), 9000 * share, 1.5) << at;
    }
    audio.request_beep(MIX_RATE / 4.0F, 3.5F / MIX_RATE, 1.0F);
    EXPECT_THAT(mix(audio, 5), ElementsAre(0, 9000, 0, 0, 0)) << "too short for ramps";
}

TEST(Mixer, BeepRestartsOncePerBufferAndOnlyOnRequest) {
    Audio audio;
    audio.request_beep(440.0F, 1.0F, 1.0F);
    Samples const from_start = mix(audio, 1024);
    audio.beep_hz = 1000.0F;
    EXPECT_NE(mix(audio, 1024), from_start);
    audio.request_beep(2000.0F, 0.1F, 0.3F);
    audio.request_beep(440.0F, 1.0F, 1.0F);
    EXPECT_EQ(mix(audio, 1024), from_start) << "the latest values count";
    short untouched = 7;
    audio.request_beep(440.0F, 0.0F, 1.0F);
    for (int const count : {0, -5}) audio.mix(&untouched, count);
    EXPECT_EQ(untouched, 7);
    EXPECT_EQ(audio.beep_length, 1) << "taken although nothing was mixed";
    audio.request_beep(440.0F, 1e30F, 1.0F);
    EXPECT_GT(rms(mix(audio, 1024)), 1000) << "a length beyond all bounds";
}

TEST(Mixer, MusicLoopsFadesAndBeginsAgainAfterSilence) {
    Audio audio;
    audio.music_samples.resize(700);
    std::iota(audio.music_samples.begin(), audio.music_samples.end(), std::int16_t{1000});
    audio.music_volume = 1.0F;
    EXPECT_THAT(mix(audio, 100), Each(0));
    audio.music_playing = true;
    mix(audio, 3068);
    EXPECT_NEAR(audio.music_gain, 0.99F, 0.0005F) << "0.14 s to 99 %";
    audio.music_gain = 1.0F;
    std::uint64_t const at = audio.music_pos;
    Samples const sound = mix(audio, 1400);
    for (std::size_t i = 0; i < sound.size(); ++i) ASSERT_EQ(sound[i], 1000 + (at + i) % 700) << i;
    audio.music_playing = false;
    mix(audio, 5050);
    EXPECT_GT(audio.music_pos, 0U);
    mix(audio, 30);
    EXPECT_EQ(audio.music_pos, 0U);
    EXPECT_THAT(mix(audio, 100), Each(0));
}

TEST(Mixer, SlotsPlayOnceFromEachRequestAndFollowTheirVolume) {
    Audio audio;
    audio.sfx_samples[0] = {100, -101, 3, -3, 200};
    audio.sfx_pos[0] = 5;
    audio.request_sfx(7, 1.0F); // never loaded
    EXPECT_THAT(mix(audio, 3), Each(0)) << "not before a request";
    audio.request_sfx(0, 1.0F);
    audio.request_sfx(0, 0.5F);
    EXPECT_THAT(mix(audio, 4), ElementsAre(50, -50, 1, -1)) << "cut towards zero";
    audio.sfx_volume[0] = 1.0F;
    EXPECT_THAT(mix(audio, 3), ElementsAre(200, 0, 0));
}

TEST(Mixer, SumClipsAtFullScale) {
    Audio audio;
    audio.sfx_samples[2] = {30000, -30000, 30000};
    audio.sfx_samples[3] = {30000, -30000, -30000};
    audio.request_sfx(2, 1.0F);
    audio.request_sfx(3, 1.0F);
    EXPECT_THAT(mix(audio, 3), ElementsAre(32767, -32768, 0));
}

} // namespace
