#include "audio/audio.h"
#include "audio/mp3.h"
#include "content_check/checks.h"
#include "content_check/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int MIX_RATE = 22050;      // Hz
constexpr int FRAME = MIX_RATE / 20; // samples: 50 ms, about what an ear takes together
constexpr float DEFAULT_MUSIC = 0.3F;
constexpr float RACING_SPEED = 0.3F; // cells a tick, three quarters of the top speed
constexpr double MIN_SHARE = 0.5;
// The octaves that small loudspeakers play of an engine, and by how much it may lie under the music
// there over a whole song.
struct SpeakerBand {
    double hz;
    double min_over_music; // dB
};
constexpr std::array<SpeakerBand, 2> SPEAKER{{{340, 1}, {680, -6}}};

constexpr double THIRD = 1.0 / 3.0; // of an octave: about what an ear tells apart
constexpr double OCTAVE = 1.0;

constexpr std::array<char const*, 4> SONGS{
    "music/Gallop Over Pine Hills -- game 2.mp3", "music/Booting GEM Dreams.mp3",
    "music/Relentless Grid.mp3", "music/Twin Rivers C64.mp3"};

using Samples = std::vector<std::int16_t>;

// The bands in which engines and tyres are to stand out, by their middles in Hz.
struct Source {
    char const* name;
    bool skidding;
    std::array<double, 3> bands;
};
constexpr std::array<Source, 2> SOURCES{
    {{"engines", false, {90, 180, 360}}, {"tyres", true, {5000, 7000, 9500}}}};

// A band-pass of two poles, so many octaves wide.
class Band {
public:
    Band(double middle, double octaves) {
        double const w = 2.0 * 3.14159265358979 * middle / MIX_RATE;
        double const alpha = std::sin(w) * std::sinh(0.34657 * octaves * w / std::sin(w));
        gain_ = alpha / (1.0 + alpha);
        back_ = {-2.0 * std::cos(w) / (1.0 + alpha), (1.0 - alpha) / (1.0 + alpha)};
    }
    double next(double in) {
        double const out = gain_ * (in - in_[1]) - back_[0] * out_[0] - back_[1] * out_[1];
        in_ = {in, in_[0]};
        out_ = {out, out_[0]};
        return out;
    }

private:
    double gain_ = 0.0;
    std::array<double, 2> back_{};
    std::array<double, 2> in_{};
    std::array<double, 2> out_{};
};

// The power of each frame in a band.
std::vector<double> powers(Samples const& samples, double middle) {
    Band band(middle, THIRD);
    std::vector<double> frames(samples.size() / FRAME);
    for (std::size_t i = 0; i < frames.size() * FRAME; ++i) {
        double const out = band.next(samples[i]);
        frames[i / FRAME] += out * out;
    }
    return frames;
}

Samples mixed(Audio& audio, std::size_t count) {
    constexpr std::size_t BUFFER = 1024;
    Samples out(count / BUFFER * BUFFER);
    for (std::size_t i = 0; i < out.size(); i += BUFFER) audio.mix(&out[i], BUFFER);
    return out;
}

// Both cars at speed, and nothing else.
Samples cars(std::size_t count, bool skidding) {
    Audio audio;
    audio.car_sound_active = true;
    for (CarFeed& car : audio.car_feed) {
        car.speed = RACING_SPEED;
        car.gas = true;
        car.skidding = skidding;
    }
    return mixed(audio, count);
}

Samples music(char const* song) {
    Audio audio;
    audio.music_samples = decode_mp3_mono(song, MIX_RATE);
    audio.music_volume = DEFAULT_MUSIC;
    audio.music_playing = true;
    return mixed(audio, audio.music_samples.size());
}

// Over the whole, in an octave: the band-pass twice.
double octave_power(Samples const& samples, double middle) {
    Band once(middle, OCTAVE);
    Band twice(middle, OCTAVE);
    double sum = 1.0;
    for (std::int16_t const sample : samples) {
        double const out = twice.next(once.next(sample));
        sum += out * out;
    }
    return sum / static_cast<double>(samples.size());
}

// In how much of the time the cars are as loud as the music, in their best band.
double share_heard(Samples const& cars, Samples const& music, Source const& source) {
    double best = 0.0;
    for (double const middle : source.bands) {
        std::vector<double> const of_cars = powers(cars, middle);
        std::vector<double> const of_music = powers(music, middle);
        std::size_t heard = 0;
        for (std::size_t i = 0; i < of_music.size(); ++i) {
            heard += of_cars[i] >= of_music[i] ? 1U : 0U;
        }
        best = std::max(best, static_cast<double>(heard) / static_cast<double>(of_music.size()));
    }
    return best;
}

void add_share(Report& report, char const* song, Samples const& over, Source const& source) {
    double const share = share_heard(cars(over.size(), source.skidding), over, source);
    std::array<char, 96> measured{};
    std::snprintf(measured.data(), measured.size(), "%s stand out %.0f %% of the time", source.name,
                  share * 100.0);
    report.add(share >= MIN_SHARE, song, measured.data());
}

void add_level(Report& report, char const* song, Samples const& over) {
    Samples const engines = cars(over.size(), false);
    for (SpeakerBand const& band : SPEAKER) {
        double const ratio = octave_power(engines, band.hz) / octave_power(over, band.hz);
        double const decibels = 10.0 * std::log10(ratio);
        std::array<char, 96> measured{};
        std::snprintf(measured.data(), measured.size(), "engines %+.1f dB over it around %.0f Hz",
                      decibels, band.hz);
        report.add(decibels >= band.min_over_music, song, measured.data());
    }
}

} // namespace

void check_engines(Report& report) {
    for (char const* song : SONGS) {
        Samples const over = music(song);
        if (over.size() < MIX_RATE) {
            report.add(false, song, "nothing to play");
            continue;
        }
        for (Source const& source : SOURCES) add_share(report, song, over, source);
        add_level(report, song, over);
    }
}
