#include "audio/mp3.h"
#include "content_check/checks.h"
#include "content_check/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int RATE = 22050;     // Hz: what the files are made at, so that nothing is resampled
constexpr int MAX_PEAK = 32000; // of 32767

using Samples = std::vector<std::int16_t>;

// Lengths in seconds; levels are RMS over the whole file, of 32767.
struct WantedSound {
    char const* file;
    double min_s;
    double max_s;
    double min_rms;
    double max_rms;
};

// Music lies under engines of 1000 to 1700 at 0.3 of its level; the pieces are alike in loudness.
constexpr std::array<WantedSound, 6> MUSIC{{
    {"music/Gallop Over Pine Hills -- game 1.mp3", 90, 180, 2500, 4000},
    {"music/Gallop Over Pine Hills -- game 2.mp3", 90, 180, 2500, 4000},
    {"music/Booting GEM Dreams.mp3", 90, 180, 2500, 4000},
    {"music/Relentless Grid.mp3", 90, 180, 2500, 4000},
    {"music/Twin Rivers C64.mp3", 90, 180, 2500, 4000},
    {"music/HiScore - Meadow Run Arcade 2.mp3", 60, 180, 2500, 4000},
}};

constexpr WantedSound CROWD{"sounds/tallycraft-crowd-cheering-314920.mp3", 8.0, 12.0, 2500, 6500};

constexpr std::array<WantedSound, 5> SOUNDS{{
    {"sounds/hollowreed-car-door-shut-297266.mp3", 0.3, 0.6, 2000, 8000},
    {"sounds/emberworks-car-engine-372477.mp3", 1.5, 3.0, 3000, 9000},
    {"sounds/openclip_circle-goodresult-82807.mp3", 1.0, 1.8, 1500, 6000},
    CROWD,
    {"sounds/brightfold-exhilarating-electro-153282.mp3", 10.0, 15.5, 3000, 6500},
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

int peak(Samples const& samples) {
    int most = 0;
    for (int const sample : samples) most = std::max(most, std::abs(sample));
    return most;
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

bool fits(Samples const& samples, WantedSound const& wanted) {
    double const seconds = seconds_of(samples);
    double const level = rms(samples, 0.0, seconds);
    return seconds >= wanted.min_s && seconds <= wanted.max_s && level >= wanted.min_rms &&
           level <= wanted.max_rms && peak(samples) < MAX_PEAK;
}

// The mixer goes from the last sample straight to the first.
bool loops_without_click_or_gap(Samples const& samples) {
    double const seconds = seconds_of(samples);
    return std::abs(samples.front() - samples.back()) <= usual_step(samples) &&
           rms(samples, 0.0, 0.05) > 150.0 && rms(samples, seconds - 0.05, 0.05) > 150.0;
}

// A sound slot has no envelope of its own: what begins or ends with a step is heard as a click.
bool begins_soon_and_ends_softly(Samples const& samples) {
    return rms(samples, 0.0, 0.15) > 100.0 && std::abs(samples.front()) < 400 &&
           std::abs(samples.back()) < 400;
}

void add_sound(Report& report, WantedSound const& wanted, Samples const& samples,
               std::string const& fault) {
    std::array<char, 96> measured{};
    std::snprintf(measured.data(), measured.size(), "%.2f s, RMS %.0f, peak %d",
                  seconds_of(samples), rms(samples, 0.0, seconds_of(samples)), peak(samples));
    bool const fit = fits(samples, wanted);
    report.add(fit && fault.empty(), wanted.file, measured.data() + fault);
}

std::string fault_in_music(Samples const& samples) {
    if (samples.size() < 2) return ", nothing to play";
    if (!loops_without_click_or_gap(samples)) return ", clicks or gapes where it begins again";
    if (!is_loud_throughout(samples, 0.0, seconds_of(samples), 1.0, 700.0)) return ", falls silent";
    return "";
}

std::string fault_in_sound(Samples const& samples) {
    if (samples.empty()) return ", nothing to play";
    return begins_soon_and_ends_softly(samples) ? "" : ", begins late or ends with a click";
}

} // namespace

void check_audio(Report& report) {
    for (WantedSound const& wanted : MUSIC) {
        Samples const samples = decode_mp3_mono(wanted.file, RATE);
        add_sound(report, wanted, samples, fault_in_music(samples));
    }
    for (WantedSound const& wanted : SOUNDS) {
        Samples const samples = decode_mp3_mono(wanted.file, RATE);
        add_sound(report, wanted, samples, fault_in_sound(samples));
    }
    // The game takes 2 s to fade the crowd from its sixth second: until then it has to cheer on.
    Samples const crowd = decode_mp3_mono(CROWD.file, RATE);
    report.add(is_loud_throughout(crowd, 0.25, 8.25, 0.5, 1500.0), CROWD.file, "cheers for 8 s");
}
