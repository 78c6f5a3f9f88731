// The method of void and cluster: dots are set one after the other, each into the middle of the
// largest void that the dots before it leave, and the order in which they come is the noise.

#include "track_compiler/blue_noise.h"

#include "track_compiler/scenery.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t SIDE = BLUE_NOISE_SIDE;
constexpr std::size_t COUNT = SIDE * SIDE;
constexpr std::size_t FIRST_DOTS = COUNT / 10;

using Noise = std::array<std::uint16_t, COUNT>;

// Dots, and how crowded each place is by them: a soft heap about every dot, wrapped at the edges.
class Dots {
public:
    Dots() {
        constexpr double WIDTH = 1.9; // pixels, of a heap
        for (std::size_t y = 0; y < SIDE; ++y) {
            for (std::size_t x = 0; x < SIDE; ++x) {
                auto const dx = static_cast<double>(std::min(x, SIDE - x));
                auto const dy = static_cast<double>(std::min(y, SIDE - y));
                heap_[y * SIDE + x] =
                    static_cast<float>(std::exp(-(dx * dx + dy * dy) / (2.0 * WIDTH * WIDTH)));
            }
        }
    }

    [[nodiscard]] bool has(std::size_t place) const { return set_[place]; }

    void put(std::size_t place, bool dot) {
        set_[place] = dot;
        float const sign = dot ? 1.0F : -1.0F;
        std::size_t const left = place % SIDE;
        std::size_t const top = place / SIDE;
        for (std::size_t y = 0; y < SIDE; ++y) {
            std::size_t const row = (y + SIDE - top) % SIDE * SIDE;
            for (std::size_t x = 0; x < SIDE; ++x) {
                crowd_[y * SIDE + x] += sign * heap_[row + (x + SIDE - left) % SIDE];
            }
        }
    }

    // The dot with the most others about it.
    [[nodiscard]] std::size_t cluster() const {
        return extreme(true, [](float a, float b) { return a > b; });
    }
    // The free place with the fewest dots about it.
    [[nodiscard]] std::size_t gap() const {
        return extreme(false, [](float a, float b) { return a < b; });
    }

private:
    template <typename Better>
    [[nodiscard]] std::size_t extreme(bool dot, Better better) const {
        std::size_t best = COUNT;
        for (std::size_t place = 0; place < COUNT; ++place) {
            if (set_[place] != dot) continue;
            if (best == COUNT || better(crowd_[place], crowd_[best])) best = place;
        }
        return best;
    }

    std::array<float, COUNT> heap_{};
    std::array<float, COUNT> crowd_{};
    std::array<bool, COUNT> set_{};
};

// Some dots strewn by chance, then moved from clusters into gaps until none can be bettered.
Dots even_dots() {
    Dots dots;
    std::uint32_t tries = 0;
    for (std::size_t count = 0; count < FIRST_DOTS; ++tries) {
        auto const place = static_cast<std::size_t>(chance(tries, 3, 8) * COUNT) % COUNT;
        if (dots.has(place)) continue;
        dots.put(place, true);
        ++count;
    }
    for (std::size_t moves = 0; moves < COUNT; ++moves) {
        std::size_t const from = dots.cluster();
        dots.put(from, false);
        std::size_t const to = dots.gap();
        dots.put(to, true);
        if (from == to) break;
    }
    return dots;
}

Noise make_noise() {
    Dots const first = even_dots();
    Noise noise{};
    // The first dots come in the order in which they can best be spared, from the last on.
    Dots dots = first;
    for (std::size_t rank = FIRST_DOTS; rank-- > 0;) {
        std::size_t const place = dots.cluster();
        dots.put(place, false);
        noise[place] = static_cast<std::uint16_t>(rank);
    }
    dots = first;
    for (std::size_t rank = FIRST_DOTS; rank < COUNT; ++rank) {
        std::size_t const place = dots.gap();
        dots.put(place, true);
        noise[place] = static_cast<std::uint16_t>(rank);
    }
    return noise;
}

} // namespace

Noise const& blue_noise() {
    static Noise const noise = make_noise();
    return noise;
}
