#include "audio/mp3.h"
#include "content_check/checks.h"
#include "content_check/report.h"
#include "loudness/loudness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int RATE = 22050;       // Hz: what the files are made at, so that nothing is resampled
constexpr double MAX_PEAK = -1.0; // dBTP
constexpr double MAX_SPREAD =
    4.0; // dB between the quietest and the loudest screen as they are heard
constexpr double MAX_EFFECT = 6.0; // dB by which 400 ms of an effect may exceed the screens
constexpr double TOLERANCE = 1.0;  // dB, for what an MP3 changes
constexpr double MIN_BASS = -12.0; // dB of all below BASS_HZ against the whole
constexpr double BASS_HZ = 180.0;
// A section of a race's music that falls below this is lost under the engines.
constexpr double MIN_SECTION = -26.0; // dB of full scale
constexpr double SECTION_S = 4.0;     // seconds, two bars or three

constexpr double RACE_VOLUME = 0.3; // of the music, in a new game

using Samples = std::vector<std::int16_t>;

// Lengths in seconds; `lufs` is the file's own loudness, `volume` what the game plays it at.
struct WantedSound {
    char const* file;
    double min_s;
    double max_s;
    double lufs;
    double volume;
};

constexpr std::array<WantedSound, 6> MUSIC{{
    {"music/Gallop Over Pine Hills -- game 1.mp3", 90, 180, -24.7, 0.6},
    {"music/Gallop Over Pine Hills -- game 2.mp3", 90, 180, -21.8, RACE_VOLUME},
    {"music/Booting GEM Dreams.mp3", 90, 180, -21.8, RACE_VOLUME},
    {"music/Relentless Grid.mp3", 90, 180, -21.8, RACE_VOLUME},
    {"music/Twin Rivers C64.mp3", 90, 180, -21.8, RACE_VOLUME},
    {"music/HiScore - Meadow Run Arcade 2.mp3", 60, 180, -23.5, 0.5},
}};

constexpr WantedSound CROWD{"sounds/tallycraft-crowd-cheering-314920.mp3", 8.0, 12.0, -27.2, 0.8};

constexpr std::array<WantedSound, 5> SOUNDS{{
    {"sounds/hollowreed-car-door-shut-297266.mp3", 0.3, 0.6, -27.5, 1.0},
    {"sounds/emberworks-car-engine-372477.mp3", 1.5, 3.0, -26.7, 0.8},
    {"sounds/openclip_circle-goodresult-82807.mp3", 1.0, 1.8, -23.6, 0.6},
    CROWD,
    {"sounds/brightfold-exhilarating-electro-153282.mp3", 10.0, 15.5, -28.3, 1.0},
}};

double seconds_of(Samples const& samples) {
    return static_cast<double>(samples.size()) / RATE;
}

// Over `seconds` from the second `from` on, as far as there are any; 0 without samples.
double rms(Samples const& samples, double from, double seconds) {
    auto const first = static_cast<std::size_t>(from * RATE);
    auto const last = std::min(samples.size(), first + static_cast<std::size_t>(seconds * RATE));
    double sum = 0.0;
    for (std::size_t i = first; i < last; ++i) sum += static_cast<double>(samples[i]) * samples[i];
    return last > first ? std::sqrt(sum / static_cast<double>(last - first)) : 0.0;
}

// Whether each `span` seconds between `from` and `to` reach a level.
bool is_loud_throughout(Samples const& samples, double from, double to, double span, double level) {
    for (; from + span <= to; from += span) {
        if (rms(samples, from, span) < level) return false;
    }
    return true;
}

// How much bass there is, in dB against the whole: two poles of a low-pass.
double bass(Samples const& samples) {
    double const share = 1.0 - std::exp(-2.0 * 3.14159265358979 * BASS_HZ / RATE);
    double once = 0.0;
    double twice = 0.0;
    double low = 0.0;
    double whole = 1.0;
    for (int const sample : samples) {
        once += share * (sample - once);
        twice += share * (once - twice);
        low += twice * twice;
        whole += static_cast<double>(sample) * sample;
    }
    return 10.0 * std::log10((low + 1e-9) / whole);
}

// The step from sample to sample that only one in a thousand exceeds.
int usual_step(Samples const& samples) {
    std::vector<int> steps;
    steps.reserve(samples.size());
    for (std::size_t i = 1; i < samples.size(); ++i) {
        steps.push_back(std::abs(samples[i] - samples[i - 1]));
    }
    auto const place = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() * 999 / 1000);
    std::nth_element(steps.begin(), place, steps.end());
    return *place;
}

// The mixer goes from the last sample straight to the first.
bool loops_without_click_or_gap(Samples const& samples) {
    double const seconds = seconds_of(samples);
    return std::abs(samples.front() - samples.back()) <= usual_step(samples) &&
           rms(samples, 0.0, 0.05) > 100.0 && rms(samples, seconds - 0.05, 0.05) > 100.0;
}

// A sound slot has no envelope of its own: what begins or ends with a step is heard as a click.
bool begins_soon_and_ends_softly(Samples const& samples) {
    return rms(samples, 0.0, 0.15) > 100.0 && std::abs(samples.front()) < 400 &&
           std::abs(samples.back()) < 400;
}

// How far a level in a file lies from where it is heard.
double decibels(double volume) {
    return 20.0 * std::log10(volume);
}

Loudness add_sound(Report& report, WantedSound const& wanted, Samples const& samples,
                   std::string const& fault) {
    Loudness const found = loudness_of(samples, RATE);
    double const seconds = seconds_of(samples);
    std::array<char, 128> measured{};
    std::snprintf(measured.data(), measured.size(),
                  "%.2f s, %.1f LUFS, heard at %.1f, peak %.1f dB", seconds, found.integrated,
                  found.integrated + decibels(wanted.volume), found.true_peak);
    bool const fits = seconds >= wanted.min_s && seconds <= wanted.max_s &&
                      std::abs(found.integrated - wanted.lufs) <= TOLERANCE &&
                      found.true_peak < MAX_PEAK;
    report.add(fits && fault.empty(), wanted.file, measured.data() + fault);
    return found;
}

std::string fault_in_music(Samples const& samples) {
    if (samples.size() < 2) return ", nothing to play";
    if (!loops_without_click_or_gap(samples)) return ", clicks or gapes where it begins again";
    double const usual = rms(samples, 0.0, seconds_of(samples));
    if (!is_loud_throughout(samples, 0.0, seconds_of(samples), 1.0, usual / 5.0)) {
        return ", falls silent";
    }
    if (bass(samples) < MIN_BASS) return ", has no bass";
    return "";
}

std::string fault_in_sound(Samples const& samples) {
    if (samples.empty()) return ", nothing to play";
    return begins_soon_and_ends_softly(samples) ? "" : ", begins late or ends with a click";
}

// The music of a race, which the game plays at 0.3, has no hole that sounds like a fault.
void check_sections(Report& report, WantedSound const& song, Samples const& samples) {
    double quietest = 32768.0;
    double at = 0.0;
    for (double from = 0.0; from + SECTION_S <= seconds_of(samples); from += 1.0) {
        double const level = rms(samples, from, SECTION_S);
        if (level < quietest) at = from;
        quietest = std::min(quietest, level);
    }
    double const found = decibels((quietest + 1e-3) / 32768.0);
    std::array<char, 96> measured{};
    std::snprintf(measured.data(), measured.size(), "quietest at %.0f s, %.1f dB", at, found);
    report.add(!samples.empty() && found >= MIN_SECTION, song.file, measured.data());
}

void check_crowd(Report& report) {
    // The game takes 2 s to fade the crowd from its sixth second: until then it has to cheer on.
    Samples const crowd = decode_mp3_mono(CROWD.file, RATE);
    double const usual = rms(crowd, 0.0, seconds_of(crowd));
    report.add(is_loud_throughout(crowd, 0.25, 8.25, 0.5, usual / 2.0), CROWD.file,
               "cheers for 8 s");
}

void check_balance(Report& report, double quietest, double loudest, double loudest_effect) {
    double const over = loudest_effect - (quietest + loudest) / 2.0;
    std::array<char, 96> measured{};
    std::snprintf(measured.data(), measured.size(), "music %.1f dB apart, effects %.1f dB over it",
                  loudest - quietest, over);
    report.add(loudest - quietest <= MAX_SPREAD && over <= MAX_EFFECT, "music and sounds",
               measured.data());
}

} // namespace

void check_audio(Report& report) {
    double quietest = 0.0;
    double loudest = -100.0;
    double loudest_effect = -100.0;
    for (WantedSound const& wanted : MUSIC) {
        Samples const samples = decode_mp3_mono(wanted.file, RATE);
        Loudness const found = add_sound(report, wanted, samples, fault_in_music(samples));
        if (wanted.volume == RACE_VOLUME) check_sections(report, wanted, samples);
        double const heard = found.integrated + decibels(wanted.volume);
        quietest = std::min(quietest, heard);
        loudest = std::max(loudest, heard);
    }
    for (WantedSound const& wanted : SOUNDS) {
        Samples const samples = decode_mp3_mono(wanted.file, RATE);
        Loudness const found = add_sound(report, wanted, samples, fault_in_sound(samples));
        loudest_effect = std::max(loudest_effect, found.momentary + decibels(wanted.volume));
    }
    check_balance(report, quietest, loudest, loudest_effect);
    check_crowd(report);
}
