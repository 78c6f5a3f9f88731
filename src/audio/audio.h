#pragma once

// All sound of the game: one device, one callback. `Audio` is the object that the game thread and
// SDL's audio thread share: the game writes requests, the mixer reads them once a buffer. Engines,
// tyres, rumble, wall hits and beeps are synthesised; music and the eight sound slots are MP3
// files, decoded whole when they are loaded.

#include "audio/shared.h"
#include "audio/songs_ahead.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What one car sounds like, written by the game thread.
struct CarFeed {
    Shared<float> speed = 0.0F; // the car's throttle, signed
    Shared<bool> skidding = false;
    Shared<bool> gas = false;
    Shared<float> rumble = 0.0F;          // 0..1, from the surface
    RequestCounter wall_hit_count;        // raised for each contact
    Shared<float> wall_hit_volume = 0.0F; // level of the latest contact, 0..1
    Shared<float> volume = 1.0F;          // the car's whole level, 0..1
};

// Synthesiser state of one car; the audio thread's own. Phases in radians, 0..2 pi.
struct CarSynth {
    double saw_phase = 0.0;
    double sub_phase = 0.0;
    double wobble_phase = 0.0;
    double rumble_phase = 0.0;
    float saw_filter = 0.0F;
    float noise_filter = 0.0F;
    float rumble_filter = 0.0F;
    std::uint32_t noise_seed = 0xC0FFEE;
    std::uint32_t wall_hit_seen = 0;
    float wall_env = 0.0F;
    float wall_filter = 0.0F;
};

constexpr int SFX_SLOTS = 8;
constexpr std::int32_t DEFAULT_SAMPLE_RATE = 22050; // Hz
// A music fade of a few hundredths of a second: share of the distance per sample.
constexpr float QUICK_FADE_STEP = 0.0015F;

struct Audio {
    // --- Requests: the game thread writes them, the mixer reads each once a buffer.
    std::array<CarFeed, 2> car_feed;
    RequestCounter beep_requests;
    Shared<float> beep_hz = 440.0F;
    Shared<float> beep_seconds = 0.0F;
    Shared<float> beep_volume = 0.0F;   // 0..1
    Shared<bool> music_playing = false; // the gain fades towards music_volume, else towards 0
    Shared<float> music_volume = 0.6F;  // target gain, 0..1
    Shared<float> music_fade_step =
        QUICK_FADE_STEP; // share of the distance to the target, per sample
    std::array<RequestCounter, SFX_SLOTS> sfx_requests;
    std::array<Shared<float>, SFX_SLOTS> sfx_volume; // 1.0 once open() has run
    Shared<bool> car_sound_active = false;           // a race is running
    Shared<bool> car_sound_enabled = true;           // the player's toggle

    // --- Sounds: the mixer reads them, the game thread exchanges them under the device lock.
    std::vector<std::int16_t> music_samples;
    std::array<std::vector<std::int16_t>, SFX_SLOTS> sfx_samples;

    // --- The mixer's own. The game thread sets them only under the device lock or while no
    // callback runs.
    std::array<CarSynth, 2> car_synth;
    std::uint32_t beep_seen = 0;
    double beep_phase = 0.0;      // radians
    double beep_step = 0.0;       // radians per sample
    std::int32_t beep_length = 0; // samples
    std::int32_t beep_pos = 0;    // samples
    float beep_level = 0.0F;
    std::uint64_t music_pos = 0;
    float music_gain = 0.0F;
    std::array<std::uint32_t, SFX_SLOTS> sfx_seen{};
    std::array<std::uint64_t, SFX_SLOTS> sfx_pos{}; // at the array's size the slot is silent

    // --- The device: settled before the callback starts, then read by both.
    std::int32_t sample_rate =
        DEFAULT_SAMPLE_RATE;  // Hz: the wish before open(), the device's after it
    std::uint32_t device = 0; // the open SDL device, 0 for none

    // --- The game thread's own.
    SongsAhead songs_ahead;

    Audio() = default;
    ~Audio() = default; // frees the arrays, not the device
    Audio(Audio const&) = delete;
    Audio& operator=(Audio const&) = delete;

    // Finds a driver, opens the device and starts it. False means a silent game.
    bool open();
    // From now on silence: nothing that is asked for is heard any more.
    void hush();
    // Stops the callback; must have run before the object goes.
    void close();

    // Replaces the music and starts it from its beginning. True if any samples came out.
    bool load_music(char const* path);
    // The songs that may be loaded next, the likeliest first: decoded ahead, a little with each
    // call of decode_ahead, so that loading one takes no time.
    void expect_music(std::vector<std::string> const& paths);
    void decode_ahead() { songs_ahead.decode_some(); }
    // Replaces one slot, silent until requested. False, with the old slot kept, on failure.
    bool load_sfx(int slot, char const* path);

    // Fills one buffer of mono samples; runs on the audio thread under the device lock. Never
    // allocates, locks or touches a file.
    void mix(short* out, int count);
    // The SDL callback: `user` is the Audio.
    static void callback(void* user, unsigned char* stream, int bytes);

    // Requests for the mixer, from the game thread: values first, counter last.
    void request_beep(float hz, float seconds, float volume);
    void request_sfx(int slot, float volume);
    void request_wall_hit(int car, float volume);
};
