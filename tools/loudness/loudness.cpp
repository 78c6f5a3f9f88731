#include "loudness/loudness.h"

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <memory>

namespace {

constexpr double SILENCE = -100.0;

struct Closer {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

double in_range(double decibels) {
    return std::isfinite(decibels) ? std::max(decibels, SILENCE) : SILENCE;
}

} // namespace

Loudness loudness_of(std::span<std::int16_t const> samples, int rate) {
    auto const hz = static_cast<unsigned long>(rate);
    std::unique_ptr<ebur128_state, Closer> const state{
        ebur128_init(1, hz, EBUR128_MODE_M | EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK)};
    Loudness found;
    if (state == nullptr) return found;
    for (std::size_t const step = hz / 20; !samples.empty();) {
        std::size_t const count = std::min(step, samples.size());
        ebur128_add_frames_short(state.get(), samples.data(), count);
        samples = samples.subspan(count);
        double now = SILENCE;
        ebur128_loudness_momentary(state.get(), &now);
        found.momentary = std::max(found.momentary, in_range(now));
    }
    ebur128_loudness_global(state.get(), &found.integrated);
    ebur128_true_peak(state.get(), 0, &found.true_peak);
    found.integrated = in_range(found.integrated);
    found.true_peak = in_range(20.0 * std::log10(found.true_peak));
    return found;
}
