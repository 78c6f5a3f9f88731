// Colours are chosen by median cut over a coarse histogram: the box of colours that would lose
// most is cut in two until there are enough, whose means are then moved to the middle of what they
// stand for. How often a colour occurs counts by a power below 1, so that a red flag on a square
// mile of grass stays red. A pixel becomes one of the two entries between which its colour lies, by
// a threshold of blue noise: what is left of the error looks like grain, never like a mesh.
//
// Colours are compared by lightness and by hue, and a wrong hue counts more: grey asphalt must
// not be strewn with blue and red.

#include "track_compiler/palette.h"

#include "render/image.h"
#include "track_compiler/blue_noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <span>
#include <vector>

namespace {

constexpr std::size_t PALETTE_SIZE = 256;
constexpr std::size_t EXTREMES = 14; // of its entries
constexpr unsigned BIN_BITS = 6;     // of the histogram, a channel
constexpr unsigned KEY_BITS = 7;     // of the search's memory, a channel
constexpr int SETTLING_ROUNDS = 4;

using Rgb = std::array<double, 3>; // 0..255
// Lightness, red against green, and both against blue, scaled so that equal distances look alike.
using Tone = std::array<double, 3>;

constexpr double LIGHTNESS = 1.7;
constexpr double RED_GREEN = 0.9;
constexpr double YELLOW_BLUE = 0.8;

Tone tone_of(Rgb const& colour) {
    auto const [r, g, b] = colour;
    return {LIGHTNESS * (0.3 * r + 0.59 * g + 0.11 * b), RED_GREEN * (r - g),
            YELLOW_BLUE * ((r + g) / 2.0 - b)};
}

Rgb colour_of(Tone const& tone) {
    double const red_green = tone[1] / RED_GREEN;
    double const yellow_blue = tone[2] / YELLOW_BLUE;
    // From lightness = g + 0.355 red_green - 0.11 yellow_blue.
    double const g = tone[0] / LIGHTNESS - 0.355 * red_green + 0.11 * yellow_blue;
    return {g + red_green, g, g + red_green / 2.0 - yellow_blue};
}

struct Bin {
    Tone mean{};
    double weight = 0.0;
    std::size_t colour = 0; // while settling: the palette's entry that stands for it
};

// Red, green and blue cut to their upper bits, side by side.
std::size_t key_of(std::uint32_t pixel, unsigned bits) {
    std::size_t key = 0;
    for (unsigned channel = 0; channel < 3; ++channel) {
        key = key << bits | ((pixel >> (8 * channel)) & 0xffU) >> (8 - bits);
    }
    return key;
}

Rgb unpacked(std::uint32_t pixel) {
    return {static_cast<double>(pixel & 0xffU), static_cast<double>(pixel >> 8U & 0xffU),
            static_cast<double>(pixel >> 16U & 0xffU)};
}

double distance2(Tone const& a, Tone const& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return sum;
}

std::vector<Bin> histogram(SDL_Surface* picture) {
    std::vector<Bin> bins(std::size_t{1} << (3 * BIN_BITS));
    for (int y = 0; y < picture->h; ++y) {
        for (std::uint32_t const pixel :
             std::span(pixel_row(picture, y), static_cast<std::size_t>(picture->w))) {
            Bin& bin = bins[key_of(pixel, BIN_BITS)];
            Rgb const colour = unpacked(pixel);
            for (std::size_t i = 0; i < 3; ++i) bin.mean[i] += colour[i];
            bin.weight += 1.0;
        }
    }
    std::erase_if(bins, [](Bin const& bin) { return bin.weight == 0.0; });
    constexpr double POWER = 0.65;
    for (Bin& bin : bins) {
        for (double& channel : bin.mean) channel /= bin.weight;
        bin.mean = tone_of(bin.mean);
        bin.weight = std::pow(bin.weight, POWER);
    }
    return bins;
}

Tone mean_of(std::span<Bin const> bins) {
    Tone sum{};
    double weight = 0.0;
    for (Bin const& bin : bins) {
        for (std::size_t i = 0; i < 3; ++i) sum[i] += bin.mean[i] * bin.weight;
        weight += bin.weight;
    }
    for (double& channel : sum) channel /= weight;
    return sum;
}

// Some of the histogram's bins, and what one colour for all of them would be off by.
struct Box {
    std::span<Bin> bins;
    std::size_t axis = 0; // the channel that errs most
    double error = 0.0;   // in that channel
};

Box make_box(std::span<Bin> bins) {
    Box box{bins};
    Tone const mean = mean_of(bins);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double error = 0.0;
        for (Bin const& bin : bins) {
            double const off = bin.mean[axis] - mean[axis];
            error += bin.weight * off * off;
        }
        if (error > box.error) box = {bins, axis, error};
    }
    return box;
}

// Puts the bins below the box's mean first; their number. Both sides have some, since there is an
// error.
std::size_t part(Box const& box) {
    double const mean = mean_of(box.bins)[box.axis];
    auto const middle = std::partition(box.bins.begin(), box.bins.end(),
                                       [&](Bin const& bin) { return bin.mean[box.axis] < mean; });
    return static_cast<std::size_t>(middle - box.bins.begin());
}

std::vector<Tone> cut(std::span<Bin> bins) {
    std::vector<Box> boxes = {make_box(bins)};
    while (boxes.size() < PALETTE_SIZE - EXTREMES) {
        auto const worst =
            std::max_element(boxes.begin(), boxes.end(),
                             [](Box const& a, Box const& b) { return a.error < b.error; });
        std::size_t const below = worst->error > 0.0 ? part(*worst) : 0;
        if (below == 0 || below == worst->bins.size()) break;
        std::span<Bin> const all = worst->bins;
        *worst = make_box(all.first(below));
        boxes.push_back(make_box(all.subspan(below)));
    }
    std::vector<Tone> palette;
    palette.reserve(boxes.size());
    for (Box const& box : boxes) palette.push_back(mean_of(box.bins));
    return palette;
}

std::size_t nearest(std::span<Tone const> palette, Tone const& colour) {
    auto const closer = [&colour](Tone const& a, Tone const& b) {
        return distance2(a, colour) < distance2(b, colour);
    };
    return static_cast<std::size_t>(std::min_element(palette.begin(), palette.end(), closer) -
                                    palette.begin());
}

// Moves each colour to the mean of the bins that it is nearest to.
void settle(std::vector<Tone>& palette, std::vector<Bin>& bins) {
    for (Bin& bin : bins) bin.colour = nearest(palette, bin.mean);
    std::sort(bins.begin(), bins.end(),
              [](Bin const& a, Bin const& b) { return a.colour < b.colour; });
    for (auto from = bins.begin(); from != bins.end();) {
        auto const to = std::find_if(from, bins.end(),
                                     [&](Bin const& bin) { return bin.colour != from->colour; });
        palette[from->colour] = mean_of(std::span(from, to));
        from = to;
    }
}

// The picture's outermost colours: every other one must lie between two entries.
void add_extremes(std::vector<Tone>& palette, std::span<Bin const> bins) {
    for (int way = 0; way < 27; ++way) {
        std::array<int, 3> const axes{way % 3 - 1, way / 3 % 3 - 1, way / 9 - 1};
        int const slants = std::abs(axes[0]) + std::abs(axes[1]) + std::abs(axes[2]);
        if (slants % 2 == 0) continue; // leaves straight ways and those into the corners
        auto const reach = [&axes](Bin const& bin) {
            return axes[0] * bin.mean[0] + axes[1] * bin.mean[1] + axes[2] * bin.mean[2];
        };
        palette.push_back(
            std::max_element(bins.begin(), bins.end(), [&reach](Bin const& a, Bin const& b) {
                return reach(a) < reach(b);
            })->mean);
    }
}

std::vector<Rgb> choose_colours(SDL_Surface* picture) {
    std::vector<Bin> bins = histogram(picture);
    std::vector<Tone> tones = cut(bins);
    for (int round = 0; round < SETTLING_ROUNDS; ++round) settle(tones, bins);
    add_extremes(tones, bins);
    std::vector<Rgb> palette;
    palette.reserve(tones.size());
    for (Tone const& tone : tones) {
        Rgb colour = colour_of(tone);
        for (double& channel : colour) channel = std::clamp(std::round(channel), 0.0, 255.0);
        palette.push_back(colour);
    }
    return palette;
}

// Two of the palette's entries, and at how many of the blue noise's thresholds it is the second.
struct Mixture {
    std::uint8_t first = 0;
    std::uint8_t second = 0;
    std::uint16_t seconds = 0;
};

// Mixtures for colours, remembered for all that have the same upper bits.
class Mixer {
public:
    explicit Mixer(std::span<Rgb const> palette)
        : away_(palette.size()), order_(palette.size()),
          known_(std::size_t{1} << (3 * KEY_BITS), UNKNOWN) {
        tones_.reserve(palette.size());
        for (Rgb const& colour : palette) tones_.push_back(tone_of(colour));
        std::iota(order_.begin(), order_.end(), std::uint8_t{0});
    }

    Mixture operator()(std::uint32_t pixel) {
        Mixture& mixture = known_[key_of(pixel, KEY_BITS)];
        if (mixture.seconds == UNKNOWN.seconds) mixture = find(tone_of(unpacked(pixel)));
        return mixture;
    }

private:
    static constexpr Mixture UNKNOWN{0, 0, 0xffff};

    // The entries nearest to the colour, nearest first.
    std::span<std::uint8_t const> candidates(Tone const& wanted) {
        constexpr std::size_t MOST = 12;
        std::transform(tones_.begin(), tones_.end(), away_.begin(),
                       [&](Tone const& tone) { return distance2(tone, wanted); });
        std::size_t const count = std::min(MOST, order_.size());
        std::partial_sort(order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(count),
                          order_.end(), [this](std::uint8_t a, std::uint8_t b) {
                              return away_[a] != away_[b] ? away_[a] < away_[b] : a < b;
                          });
        return std::span(order_).first(count);
    }

    // The pair whose mixture is nearest and does not vary much from pixel to pixel.
    Mixture find(Tone const& wanted) {
        constexpr double EXACTNESS = 8.0; // what a wrong mean counts for against coarse grain
        std::span<std::uint8_t const> const near = candidates(wanted);
        Mixture best{near[0], near[0], 0};
        double least = EXACTNESS * away_[near[0]];
        for (std::uint8_t const first : near) {
            for (std::uint8_t const second : near) {
                double const span2 = distance2(tones_[first], tones_[second]);
                double const share = (away_[first] - away_[second] + span2) / (2.0 * span2);
                if (!(share > 0.0 && share <= 0.5)) continue; // also of an entry with itself
                double const grain = share * (1.0 - share) * span2;
                double const mean = (1.0 - share) * away_[first] + share * away_[second] - grain;
                double const cost = EXACTNESS * mean + grain;
                if (cost >= least) continue;
                least = cost;
                auto const thresholds = static_cast<double>(blue_noise().size());
                best = {first, second, static_cast<std::uint16_t>(share * thresholds)};
            }
        }
        return best;
    }

    std::vector<Tone> tones_;
    std::vector<double> away_;        // each entry's squared distance to the colour looked for
    std::vector<std::uint8_t> order_; // of the entries, by that distance
    std::vector<Mixture> known_;
};

void dither_row(std::span<std::uint32_t const> pixels, std::uint8_t* out,
                std::uint16_t const* thresholds, Mixer& mixer) {
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        Mixture const mixture = mixer(pixels[x]);
        bool const second = thresholds[x % BLUE_NOISE_SIDE] < mixture.seconds;
        out[x] = second ? mixture.second : mixture.first;
    }
}

void set_palette(SDL_Surface* picture, std::span<Rgb const> palette) {
    std::array<SDL_Color, PALETTE_SIZE> colours{};
    std::transform(palette.begin(), palette.end(), colours.begin(), [](Rgb const& colour) {
        return SDL_Color{static_cast<std::uint8_t>(colour[0]), static_cast<std::uint8_t>(colour[1]),
                         static_cast<std::uint8_t>(colour[2]), 255};
    });
    SDL_SetPaletteColors(picture->format->palette, colours.data(), 0,
                         static_cast<int>(palette.size()));
}

} // namespace

SurfaceHandle reduce_to_palette(SDL_Surface* picture) {
    SurfaceHandle out(
        SDL_CreateRGBSurfaceWithFormat(0, picture->w, picture->h, 8, SDL_PIXELFORMAT_INDEX8));
    if (!out) return out;
    std::vector<Rgb> const palette = choose_colours(picture);
    set_palette(out.get(), palette);
    Mixer mixer(palette);
    auto const width = static_cast<std::size_t>(picture->w);
    for (int y = 0; y < picture->h; ++y) {
        auto* row = static_cast<std::uint8_t*>(out->pixels) + std::ptrdiff_t{y} * out->pitch;
        std::size_t const line = static_cast<std::size_t>(y) % BLUE_NOISE_SIDE;
        dither_row(std::span(pixel_row(picture, y), width), row,
                   blue_noise().data() + line * BLUE_NOISE_SIDE, mixer);
    }
    return out;
}
