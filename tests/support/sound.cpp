#include "support/sound.h"

#include "support/files.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <numbers>
#include <stdexcept>

namespace {

constexpr double TWO_PI = 2.0 * std::numbers::pi;

template <typename T>
std::string as_bytes(T const* values, std::size_t count) {
    return {reinterpret_cast<char const*>(values), count * sizeof(T)};
}

std::string little_endian(std::uint32_t value) {
    return as_bytes(&value, 1);
}

std::string wav_header(std::size_t samples, int rate) {
    auto const bytes = static_cast<std::uint32_t>(samples * 2);
    auto const hz = static_cast<std::uint32_t>(rate);
    std::string const pcm_mono{"\x01\x00\x01\x00", 4};
    std::string const two_bytes_of_16_bits{"\x02\x00\x10\x00", 4};
    return "RIFF" + little_endian(36 + bytes) + "WAVEfmt " + little_endian(16) + pcm_mono +
           little_endian(hz) + little_endian(hz * 2) + two_bytes_of_16_bits + "data" +
           little_endian(bytes);
}

} // namespace

Samples sine(double hz, double seconds, double level, int rate, double phase) {
    Samples samples(static_cast<std::size_t>(std::lround(seconds * rate)));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::int16_t>(
            std::lround(level * std::sin(TWO_PI * hz * static_cast<double>(i) / rate + phase)));
    }
    return samples;
}

void write_mp3(std::string const& path, Samples const& samples, int rate) {
    std::string const wav = path + ".wav";
    write_file(wav, wav_header(samples.size(), rate) + as_bytes(samples.data(), samples.size()));
    std::string const command = "lame --quiet -m m -b 64 '" + wav + "' '" + path + "'";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

double level_at(std::span<std::int16_t const> samples, double hz, int rate) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        sum += std::polar<double>(samples[i], -TWO_PI * hz * static_cast<double>(i) / rate);
    }
    return 2.0 * std::abs(sum) / static_cast<double>(samples.size());
}

double rms(std::span<std::int16_t const> samples) {
    double sum = 0.0;
    for (double const sample : samples) sum += sample * sample;
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

int peak(std::span<std::int16_t const> samples) {
    int highest = 0;
    for (int const sample : samples) highest = std::max(highest, std::abs(sample));
    return highest;
}
