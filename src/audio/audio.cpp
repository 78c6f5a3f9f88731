#include "audio/audio.h"

#include "audio/mp3.h"
#include "platform/shipped_file.h"
#include "platform/sound_drivers.h"

#include <SDL.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr int BUFFER_SAMPLES = 1024; // 46 ms at 22,050 Hz: how often the sound follows the game

// A sound server that starts with the session may come up after the game does: 4 s of patience.
constexpr int DRIVER_PASSES = 40;
constexpr int PASS_DELAY_MS = 100;

// Two seeds, so that the noises of the two cars never cancel out.
constexpr std::array<std::uint32_t, 2> NOISE_SEEDS{0xC0FFEE, 0x9EF879A7};

// Holds the audio thread out of the sample arrays; nothing to hold without a device.
class DeviceLock {
public:
    explicit DeviceLock(std::uint32_t device) : device_(device) {
        if (device_ != 0) SDL_LockAudioDevice(device_);
    }
    ~DeviceLock() {
        if (device_ != 0) SDL_UnlockAudioDevice(device_);
    }
    DeviceLock(DeviceLock const&) = delete;
    DeviceLock& operator=(DeviceLock const&) = delete;

private:
    std::uint32_t device_;
};

void reset_sounds(Audio& audio) {
    for (std::size_t car = 0; car < audio.car_synth.size(); ++car) {
        audio.car_synth[car].noise_seed = NOISE_SEEDS[car];
    }
    for (std::size_t slot = 0; slot < SFX_SLOTS; ++slot) {
        audio.sfx_requests[slot].reset();
        audio.sfx_seen[slot] = 0;
        audio.sfx_volume[slot] = 1.0F;
        audio.sfx_pos[slot] = 0;
    }
}

// The driver that the player named, or what suits this platform.
std::vector<char const*> wanted_drivers() {
    char const* const named = std::getenv("SDL_AUDIODRIVER");
    if (named != nullptr && *named != '\0') return {named};
    return preferred_sound_drivers();
}

// The first driver of the list that comes up now, or null.
char const* try_drivers(std::vector<char const*> const& drivers) {
    for (char const* driver : drivers) {
        SDL_AudioQuit();
        if (SDL_AudioInit(driver) == 0) return driver;
    }
    return nullptr;
}

void start_driver() {
    std::vector<char const*> const drivers = wanted_drivers();
    for (int pass = 0; pass < DRIVER_PASSES; ++pass) {
        if (char const* driver = try_drivers(drivers)) {
            if (pass > 0) {
                std::fprintf(stderr, "audio: %s came up after %d ms\n", driver,
                             pass * PASS_DELAY_MS);
            }
            return;
        }
        SDL_Delay(PASS_DELAY_MS);
    }
    SDL_AudioQuit();
    SDL_AudioInit(nullptr); // SDL's own choice; if that fails too, so will the device
}

} // namespace

bool Audio::open() {
    reset_sounds(*this);
    start_driver();
    SDL_AudioSpec wanted{};
    wanted.freq = sample_rate;
    wanted.format = AUDIO_S16LSB;
    wanted.channels = 1;
    wanted.samples = BUFFER_SAMPLES;
    wanted.callback = &Audio::callback;
    wanted.userdata = this;
    SDL_AudioSpec obtained{};
    device = SDL_OpenAudioDevice(nullptr, 0, &wanted, &obtained, 0);
    if (device == 0) {
        std::fprintf(stderr, "Audio disabled: %s\n", SDL_GetError());
        return false;
    }
    sample_rate = obtained.freq;
    SDL_PauseAudioDevice(device, 0);
    return true;
}

void Audio::hush() {
    if (device != 0) SDL_PauseAudioDevice(device, 1);
}

void Audio::close() {
    if (device != 0) SDL_CloseAudioDevice(device);
    device = 0;
}

bool Audio::load_music(char const* path) {
    std::vector<std::int16_t> decoded = songs_ahead.take(path);
    if (decoded.empty()) {
        ShippedFile const song(path);
        decoded = decode_mp3_mono(path, sample_rate);
    }
    bool const any = !decoded.empty();
    DeviceLock const lock(device);
    music_samples = std::move(decoded);
    music_pos = 0;
    return any;
}

void Audio::expect_music(std::vector<std::string> const& paths) {
    songs_ahead.expect(paths, sample_rate);
}

bool Audio::load_sfx(int slot, char const* path) {
    if (slot < 0 || slot >= SFX_SLOTS) return false;
    std::vector<std::int16_t> decoded = decode_mp3_mono(path, sample_rate);
    if (decoded.empty()) {
        std::fprintf(stderr, "load_sfx[%d](%s): no samples\n", slot, path);
        return false;
    }
    auto const index = static_cast<std::size_t>(slot);
    DeviceLock const lock(device);
    sfx_samples[index] = std::move(decoded);
    sfx_pos[index] = sfx_samples[index].size();
    return true;
}

void Audio::callback(void* user, unsigned char* stream, int bytes) {
    static_cast<Audio*>(user)->mix(reinterpret_cast<short*>(stream), bytes / 2);
}

void Audio::request_beep(float hz, float seconds, float volume) {
    beep_hz = hz;
    beep_seconds = seconds;
    beep_volume = volume;
    beep_requests.raise();
}

void Audio::request_sfx(int slot, float volume) {
    auto const index = static_cast<std::size_t>(slot);
    sfx_volume[index] = volume;
    sfx_requests[index].raise();
}

void Audio::request_wall_hit(int car, float volume) {
    CarFeed& feed = car_feed[static_cast<std::size_t>(car)];
    feed.wall_hit_volume = volume;
    feed.wall_hit_count.raise();
}
