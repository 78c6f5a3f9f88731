// The mixer at full work against the sines that it cannot do without, and against real time.

#include "audio/audio.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <ctime>

namespace {

constexpr int BUFFER = 1024;

// Processor time of this thread, so that a busy machine does not count.
double cpu_seconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Everything sounds at once: both cars skid over a kerb into a wall, with beep, music and all
// slots.
void make_everything_sound(Audio& audio) {
    audio.car_sound_active = true;
    for (int car = 0; car < 2; ++car) {
        CarFeed& feed = audio.car_feed[static_cast<std::size_t>(car)];
        feed.speed = 0.8F;
        feed.skidding = true;
        feed.rumble = 0.6F;
        audio.request_wall_hit(car, 1.0F);
    }
    audio.request_beep(440.0F, 1.0F, 0.5F);
    audio.music_samples.assign(220500, 100);
    audio.music_playing = true;
    for (int slot = 0; slot < SFX_SLOTS; ++slot) {
        audio.sfx_samples[static_cast<std::size_t>(slot)].assign(22050, 100);
        audio.request_sfx(slot, 0.5F);
    }
}

// The five sines of a sample: two wobbles, two rumbles, one beep.
void bare_sines(double& phase) {
    for (int i = 0; i < BUFFER * 5; ++i) {
        benchmark::DoNotOptimize(std::sin(phase));
        phase = phase > 6.0 ? 0.0 : phase + 0.01;
    }
}

// Mixes one buffer after another, each made ready by `prepare`; the floor is taken in between.
template <typename Prepare>
void measure(benchmark::State& state, Audio& audio, Prepare prepare) {
    std::array<short, BUFFER> out{};
    double phase = 0.0;
    double mixing = 0.0;
    double floor = 0.0;
    for (auto _ : state) {
        prepare();
        double const start = cpu_seconds();
        audio.mix(out.data(), BUFFER);
        double const mixed = cpu_seconds() - start;
        bare_sines(phase);
        floor += cpu_seconds() - start - mixed;
        mixing += mixed;
        state.SetIterationTime(mixed);
    }
    double const played = static_cast<double>(state.iterations()) * BUFFER / audio.sample_rate;
    state.counters["x_sines"] = mixing / floor;
    state.counters["percent_of_a_core"] = 100.0 * mixing / played;
}

void full_mix(benchmark::State& state) {
    Audio audio;
    measure(state, audio, [&] { make_everything_sound(audio); });
}
BENCHMARK(full_mix)->UseManualTime();

// The menu with its music faded out long ago: no sound, and a gain that creeps towards zero.
void silence(benchmark::State& state) {
    Audio audio;
    std::array<short, BUFFER> out{};
    audio.music_samples.assign(220500, 100);
    audio.music_gain = 0.6F;
    for (int i = 0; i < 200; ++i) audio.mix(out.data(), BUFFER);
    measure(state, audio, [] {});
}
BENCHMARK(silence)->UseManualTime();

} // namespace
