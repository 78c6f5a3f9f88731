// The synthesiser and mixer behind Audio::mix. Each buffer first takes what the game has written
// since the last one: the requests that start a sound, and the levels that hold still for the
// buffer. Then every sample is the sum of two cars, beep, music and slots, clipped and no more.
//
// Phases and their sines are 64-bit, so that a tone stays in tune over hours; signals, filters and
// the sum are 32-bit floats. Levels are in sample units, 32768 being full scale.

#include "audio/audio.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double PI = std::numbers::pi;
constexpr double TWO_PI = 2.0 * PI;
constexpr double WOBBLE_RADIANS_PER_S = 10.681415022205297; // 1.7 Hz
constexpr double RUMBLE_RADIANS_PER_S = 201.06192982974676; // 32 Hz

// How one car sounds for the length of a buffer.
struct CarTone {
    double hz = 0.0;
    float engine_level = 0.0F;
    float tyre_level = 0.0F;
    float noise_share = 0.0F; // share of the way that the tyre noise filter goes per sample
    float white_share = 0.0F; // of the tyre noise that is unfiltered
    float rumble_level = 0.0F;
    float car_level = 0.0F;
};

// What stands still for the length of a buffer.
struct Buffer {
    double sample_rate = 0.0; // Hz
    double wobble_step = 0.0; // radians per sample
    double rumble_step = 0.0;
    std::array<CarTone, 2> cars;
    std::int32_t beep_attack = 0; // samples
    std::int32_t beep_release = 0;
    float music_fade_step = 0.0F;
    std::array<float, SFX_SLOTS> sfx_volume{};
};

CarTone read_car(CarFeed const& feed, bool sound_on) {
    float const a = std::abs(feed.speed);
    bool const gas = feed.gas;
    CarTone tone;
    tone.hz = static_cast<double>(a * 120.0F + 45.0F);
    tone.noise_share = gas ? 0.4F : 0.1F;
    tone.white_share = gas ? 0.3F : 0.1F;
    tone.car_level = feed.volume;
    if (!sound_on) return tone;
    tone.engine_level = (a * 0.25F + 0.1F) * 9500.0F;
    if (feed.skidding) tone.tyre_level = a * (gas ? 2100.0F : 1400.0F);
    tone.rumble_level = (a * 0.75F + 0.25F) * feed.rumble * 7000.0F;
    return tone;
}

// True once for any number of requests since the last call.
bool take_request(RequestCounter const& requests, std::uint32_t& seen) {
    std::uint32_t const count = requests.count();
    if (count == seen) return false;
    seen = count;
    return true;
}

// At least one sample, and no more than an int holds, whatever was asked for.
std::int32_t beep_samples(float seconds, float sample_rate) {
    float const samples = seconds * sample_rate;
    if (!(samples >= 1.0F)) return 1;
    return static_cast<std::int32_t>(std::min(samples, 2.0e9F));
}

void take_requests(Audio& audio) {
    for (std::size_t car = 0; car < audio.car_feed.size(); ++car) {
        CarFeed const& feed = audio.car_feed[car];
        CarSynth& synth = audio.car_synth[car];
        if (take_request(feed.wall_hit_count, synth.wall_hit_seen)) {
            synth.wall_env = feed.wall_hit_volume;
        }
    }
    if (take_request(audio.beep_requests, audio.beep_seen)) {
        auto const rate = static_cast<float>(audio.sample_rate);
        audio.beep_pos = 0;
        audio.beep_phase = 0.0;
        audio.beep_level = audio.beep_volume;
        audio.beep_step = static_cast<double>(audio.beep_hz) * TWO_PI / static_cast<double>(rate);
        audio.beep_length = beep_samples(audio.beep_seconds, rate);
    }
    for (std::size_t slot = 0; slot < SFX_SLOTS; ++slot) {
        if (take_request(audio.sfx_requests[slot], audio.sfx_seen[slot])) audio.sfx_pos[slot] = 0;
    }
}

// A gain that fades towards zero never arrives, but ends up in numbers so small that processors
// take several times as long over them. Far below hearing it becomes a plain zero.
void end_faded_gain(float& gain) {
    if (std::abs(gain) < 1e-20F) gain = 0.0F;
}

Buffer begin_buffer(Audio& audio) {
    take_requests(audio);
    end_faded_gain(audio.music_gain);
    bool const sound_on = audio.car_sound_active && audio.car_sound_enabled;
    Buffer buffer;
    buffer.sample_rate = static_cast<double>(audio.sample_rate);
    buffer.wobble_step = WOBBLE_RADIANS_PER_S / buffer.sample_rate;
    buffer.rumble_step = RUMBLE_RADIANS_PER_S / buffer.sample_rate;
    for (std::size_t car = 0; car < buffer.cars.size(); ++car) {
        buffer.cars[car] = read_car(audio.car_feed[car], sound_on);
    }
    std::int32_t const quarter = audio.beep_length / 4;
    buffer.beep_attack = std::min(quarter, static_cast<std::int32_t>(buffer.sample_rate * 0.005));
    buffer.beep_release = std::min(quarter, static_cast<std::int32_t>(buffer.sample_rate * 0.02));
    buffer.music_fade_step = audio.music_fade_step;
    for (std::size_t slot = 0; slot < SFX_SLOTS; ++slot) {
        buffer.sfx_volume[slot] = audio.sfx_volume[slot];
    }
    return buffer;
}

void advance(double& phase, double step) {
    phase += step;
    if (phase > TWO_PI) phase -= TWO_PI;
}

void follow(float& filter, float target, float share) {
    filter += (target - filter) * share;
}

// White noise, -1 to 1.
float next_noise(std::uint32_t& seed) {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<float>(static_cast<std::int32_t>(seed)) * 4.656613e-10F;
}

// Two saws an octave apart, through a low-pass.
float engine_signal(CarSynth& synth, CarTone const& tone) {
    double const raw = 0.55 * (synth.saw_phase / PI - 1.0) + 0.45 * (synth.sub_phase / PI - 1.0);
    follow(synth.saw_filter, static_cast<float>(raw), 0.18F);
    return tone.engine_level * synth.saw_filter;
}

float tyre_signal(CarSynth& synth, CarTone const& tone, float noise) {
    follow(synth.noise_filter, noise, tone.noise_share);
    return ((1.0F - tone.white_share) * synth.noise_filter + tone.white_share * noise) *
           tone.tyre_level;
}

// Falls to a thousandth of a full hit in 0.26 s at 22,050 Hz. Rings out even when a race ends.
float wall_signal(CarSynth& synth, float noise) {
    if (!(synth.wall_env > 0.001F)) return 0.0F;
    follow(synth.wall_filter, noise, 0.05F);
    float const signal = synth.wall_filter * synth.wall_env * 6500.0F;
    synth.wall_env *= 0.9988F;
    return signal;
}

// Bursts of low noise, 32 a second: wheels over the stripes of a kerb.
float rumble_signal(CarSynth& synth, CarTone const& tone, float noise) {
    if (!(tone.rumble_level > 1.0F)) return 0.0F;
    follow(synth.rumble_filter, noise, 0.04F);
    double const burst = std::max(0.0, 0.6 * std::sin(synth.rumble_phase) + 0.4);
    return static_cast<float>(burst) * synth.rumble_filter * tone.rumble_level;
}

float next_car_sample(CarSynth& synth, CarTone const& tone, Buffer const& buffer) {
    float const noise = next_noise(synth.noise_seed);
    double const hz = tone.hz * (1.0 + 0.03 * std::sin(synth.wobble_phase));
    double const step = hz * TWO_PI / buffer.sample_rate;
    float const sum = engine_signal(synth, tone) + tyre_signal(synth, tone, noise) +
                      wall_signal(synth, noise) + rumble_signal(synth, tone, noise);
    advance(synth.saw_phase, step);
    advance(synth.sub_phase, step * 0.5);
    advance(synth.wobble_phase, buffer.wobble_step);
    advance(synth.rumble_phase, buffer.rumble_step);
    return sum * tone.car_level;
}

float beep_envelope(Audio const& audio, Buffer const& buffer) {
    if (audio.beep_pos < buffer.beep_attack) {
        return static_cast<float>(audio.beep_pos) / static_cast<float>(buffer.beep_attack);
    }
    std::int32_t const left = audio.beep_length - audio.beep_pos;
    if (left < buffer.beep_release) {
        return static_cast<float>(left) / static_cast<float>(buffer.beep_release);
    }
    return 1.0F;
}

float next_beep_sample(Audio& audio, Buffer const& buffer) {
    if (audio.beep_pos >= audio.beep_length) return 0.0F;
    float const sample = static_cast<float>(std::sin(audio.beep_phase)) *
                         beep_envelope(audio, buffer) * audio.beep_level * 9000.0F;
    advance(audio.beep_phase, audio.beep_step);
    ++audio.beep_pos;
    return sample;
}

// Loops. Music that has faded out starts from its beginning when it fades in again.
float next_music_sample(Audio& audio, float fade_step) {
    float const target = audio.music_playing ? float{audio.music_volume} : 0.0F;
    follow(audio.music_gain, target, fade_step);
    if (audio.music_samples.empty() || !(audio.music_gain > 0.0005F)) {
        audio.music_pos = 0;
        return 0.0F;
    }
    auto const at = static_cast<std::size_t>(audio.music_pos);
    std::size_t const index = at < audio.music_samples.size() ? at : 0;
    audio.music_pos = index + 1;
    return static_cast<float>(audio.music_samples[index]) * audio.music_gain;
}

float next_sfx_sample(Audio& audio, Buffer const& buffer) {
    float sum = 0.0F;
    for (std::size_t slot = 0; slot < SFX_SLOTS; ++slot) {
        std::vector<std::int16_t> const& samples = audio.sfx_samples[slot];
        if (audio.sfx_pos[slot] >= samples.size()) continue;
        auto const at = static_cast<std::size_t>(audio.sfx_pos[slot]);
        sum += static_cast<float>(samples[at]) * buffer.sfx_volume[slot];
        ++audio.sfx_pos[slot];
    }
    return sum;
}

// Cut towards zero. There is no other limiter: full music and a fanfare may clip.
short to_sample(float value) {
    if (!(value > -32768.0F)) return -32768;
    return static_cast<short>(std::min(value, 32767.0F));
}

} // namespace

void Audio::mix(short* out, int count) {
    Buffer const buffer = begin_buffer(*this);
    for (int i = 0; i < count; ++i) {
        float const first = next_car_sample(car_synth[0], buffer.cars[0], buffer);
        float const second = next_car_sample(car_synth[1], buffer.cars[1], buffer);
        float const beep = next_beep_sample(*this, buffer);
        float const music = next_music_sample(*this, buffer.music_fade_step);
        float const sfx = next_sfx_sample(*this, buffer);
        out[i] = to_sample((first + second) * 0.5F + beep + music + sfx);
    }
}
