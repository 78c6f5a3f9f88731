#include "audio/audio.h"
#include "audio/mp3.h"
#include "support/files.h"
#include "support/said.h"
#include "support/sound.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr int RATE = 22050;

// A sound file in a folder of its own.
struct Tone {
    TempDir folder;
    std::string path = folder.file("tone.mp3");

    Tone(double hz, double seconds, double level, int rate = RATE) {
        write_mp3(path, sine(hz, seconds, level, rate), rate);
    }
};

TEST(Mp3, DecodesAnyRateToTheWholeSoundAtTheRateAskedFor) {
    for (int const rate : {22050, 44100, 48000}) {
        Tone const tone(1000, 1.5, 10000, rate);
        Samples const sound = decode_mp3_mono(tone.path.c_str(), RATE);
        EXPECT_NEAR(static_cast<double>(sound.size()), 1.5 * RATE, 30) << rate;
        EXPECT_NEAR(level_at(std::span(sound).subspan(2205, 22050), 1000, RATE), 10000, 700)
            << rate;
    }
}

TEST(Mp3, MissingAndBrokenFilesSaySoAndGiveWhatTheyHold) {
    std::string said = errors_of([] { EXPECT_TRUE(decode_mp3_mono("no/such.mp3", RATE).empty()); });
    EXPECT_THAT(said, testing::MatchesRegex("mpg123_open\\(no/such.mp3\\) failed: .*\n"));
    Tone const tone(500, 2.0, 9000);
    std::string const whole = read_file(tone.path);
    write_file(tone.path, whole.substr(0, whole.size() / 2));
    EXPECT_NEAR(static_cast<double>(decode_mp3_mono(tone.path.c_str(), RATE).size()), RATE,
                RATE / 8.0);
    for (std::string const& bytes : {std::string(), std::string("not music"),
                                     std::string(70000, 'x'), std::string(5000, '\xff')}) {
        write_file(tone.path, bytes);
        said = errors_of([&] { EXPECT_TRUE(decode_mp3_mono(tone.path.c_str(), RATE).empty()); });
        EXPECT_LE(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
}

TEST(AudioFiles, ASlotKeepsItsSoundWhenALoadFailsAndMusicDoesNot) {
    Tone const tone(500, 0.2, 9000);
    char const* const path = tone.path.c_str();
    Audio audio;
    EXPECT_FALSE(audio.load_sfx(8, path));
    EXPECT_FALSE(audio.load_sfx(-1, path));
    ASSERT_TRUE(audio.load_sfx(7, path));
    EXPECT_EQ(audio.sfx_pos[7], audio.sfx_samples[7].size()) << "silent until requested";
    EXPECT_THAT(errors_of([&] { EXPECT_FALSE(audio.load_sfx(7, "none.mp3")); }),
                HasSubstr("load_sfx[7](none.mp3): no samples\n"));
    EXPECT_FALSE(audio.sfx_samples[7].empty());
    audio.music_pos = 99;
    audio.music_gain = 0.4F;
    EXPECT_TRUE(audio.load_music(path));
    EXPECT_EQ(audio.music_pos, 0U);
    EXPECT_EQ(audio.music_gain, 0.4F);
    EXPECT_FALSE(audio.load_music("none.mp3"));
    EXPECT_TRUE(audio.music_samples.empty());
}

TEST(AudioFiles, ASongDecodedAheadIsTheSameSong) {
    Tone const tone(500, 2.0, 9000);
    Tone const other(700, 2.0, 9000);
    Samples const whole = decode_mp3_mono(tone.path.c_str(), RATE);
    for (int calls : {0, 2, 100}) { // not begun, a part, whole
        Audio audio;
        audio.expect_music({"none.mp3", tone.path, other.path});
        for (int call = 0; call < calls; ++call) audio.decode_ahead();
        audio.expect_music({tone.path});
        if (calls == 100) write_file(tone.path, "not music"); // it is read no more
        EXPECT_TRUE(audio.load_music(tone.path.c_str()));
        EXPECT_EQ(audio.music_samples, whole) << calls;
    }
    std::filesystem::remove(tone.path);
    Audio audio;
    audio.expect_music({tone.path});
    EXPECT_EQ(errors_of([&] { audio.decode_ahead(); }), "") << "said when it is due";
    EXPECT_THAT(errors_of([&] { EXPECT_FALSE(audio.load_music(tone.path.c_str())); }),
                HasSubstr(tone.path));
}

TEST(AudioDevice, PlaysWhatIsAskedForThroughSdl) {
    TempDir const folder;
    std::string const path = folder.file("played.raw");
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
    Audio audio;
    EXPECT_THAT(errors_of([&] { EXPECT_TRUE(audio.open()); }), Not(HasSubstr("audio: ")))
        << "up at the first try says nothing";
    setenv("SDL_AUDIODRIVER", "dummy", 1); // as in all other tests
    ASSERT_NE(audio.device, 0U);
    auto const half_a_second = static_cast<std::uintmax_t>(audio.sample_rate); // in bytes
    std::uintmax_t const enough = std::filesystem::file_size(path) + half_a_second;
    audio.request_beep(1000.0F, 0.3F, 1.0F);
    while (std::filesystem::file_size(path) < enough) SDL_Delay(1);
    audio.close();
    EXPECT_EQ(audio.device, 0U);
    std::string const bytes = read_file(path);
    Samples sound(bytes.size() / 2);
    std::copy_n(bytes.data(), sound.size() * 2, reinterpret_cast<char*>(sound.data()));
    auto const starts = std::find_if(sound.begin(), sound.end(), [](int x) { return x != 0; });
    ASSERT_GT(sound.end() - starts, 6615);
    std::span const beep(&*starts, 6615);
    EXPECT_NEAR(level_at(beep.subspan(500, 5512), 1000, audio.sample_rate), 9000, 20);
}

// Writes every field that the game writes while a race is on.
void play_a_frame(Audio& audio, int frame) {
    for (int car = 0; car < 2; ++car) {
        CarFeed& feed = audio.car_feed[static_cast<std::size_t>(car)];
        feed.speed = static_cast<float>(frame % 100) / 100.0F;
        feed.skidding = frame % 3 == 0;
        feed.gas = frame % 2 == 0;
        feed.rumble = frame % 5 == 0 ? 0.6F : 0.0F;
        feed.volume = 1.0F;
        if (frame % 7 == car) audio.request_wall_hit(car, 0.8F);
    }
    audio.car_sound_active = frame % 50 != 0;
    audio.car_sound_enabled = frame % 60 != 0;
    audio.music_playing = frame % 4 != 0;
    audio.music_volume = 0.5F;
    audio.music_fade_step = 0.002F;
    audio.request_sfx(frame % SFX_SLOTS, 0.7F);
    if (frame % 11 == 0) audio.request_beep(440.0F, 0.05F, 1.0F);
}

// Of use under the thread sanitizer, which reports any field shared without care.
TEST(AudioDevice, GameWritesAndLoadsWhileTheCallbackMixes) {
    Tone const tone(500, 0.2, 9000);
    Audio audio;
    ASSERT_TRUE(audio.open()); // the dummy driver calls back in real time
    std::atomic<bool> stop = false;
    std::atomic<int> rounds = 0;
    std::thread second_callback([&] { // and this one, far more often
        std::vector<short> buffer(64);
        for (; !stop; ++rounds) {
            SDL_LockAudioDevice(audio.device);
            Audio::callback(&audio, reinterpret_cast<unsigned char*>(buffer.data()), 128);
            SDL_UnlockAudioDevice(audio.device);
        }
    });
    for (int frame = 0; frame < 3000 || rounds < 100; ++frame) {
        play_a_frame(audio, frame);
        if (frame % 100 == 0) {
            EXPECT_TRUE(audio.load_music(tone.path.c_str()));
            EXPECT_TRUE(audio.load_sfx(frame / 100 % SFX_SLOTS, tone.path.c_str()));
        }
    }
    stop = true;
    second_callback.join();
    audio.close();
    EXPECT_NE(audio.sfx_seen[0], 0U);
    EXPECT_NE(audio.beep_seen, 0U);
}

} // namespace
