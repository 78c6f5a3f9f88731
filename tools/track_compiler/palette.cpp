// Colours are chosen by median cut over a coarse histogram: the box of colours that would lose
// most is cut in two until there are 256, whose means are then moved to the middle of what they
// stand for. How often a colour occurs counts by its square root only, so that a red flag on a
// square mile of grass stays red. Pixels take the nearest colour, and hand what it is off by to
// the pixels that come next (Floyd and Steinberg).

#include "track_compiler/palette.h"

#include "render/image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace {

constexpr std::size_t PALETTE_SIZE = 256;
constexpr unsigned BIN_BITS = 5; // of the histogram, a channel
constexpr unsigned KEY_BITS = 6; // of the search's memory, a channel
constexpr int SETTLING_ROUNDS = 4;

using Rgb = std::array<double, 3>; // 0..255

struct Bin {
    Rgb mean{};
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

double distance2(Rgb const& a, Rgb const& b) {
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
    for (Bin& bin : bins) {
        for (double& channel : bin.mean) channel /= bin.weight;
        bin.weight = std::sqrt(bin.weight);
    }
    return bins;
}

Rgb mean_of(std::span<Bin const> bins) {
    Rgb sum{};
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
    Rgb const mean = mean_of(bins);
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

std::vector<Rgb> cut(std::span<Bin> bins) {
    std::vector<Box> boxes = {make_box(bins)};
    while (boxes.size() < PALETTE_SIZE) {
        auto const worst =
            std::max_element(boxes.begin(), boxes.end(),
                             [](Box const& a, Box const& b) { return a.error < b.error; });
        std::size_t const below = worst->error > 0.0 ? part(*worst) : 0;
        if (below == 0 || below == worst->bins.size()) break;
        std::span<Bin> const all = worst->bins;
        *worst = make_box(all.first(below));
        boxes.push_back(make_box(all.subspan(below)));
    }
    std::vector<Rgb> palette;
    palette.reserve(boxes.size());
    for (Box const& box : boxes) palette.push_back(mean_of(box.bins));
    return palette;
}

std::size_t nearest(std::span<Rgb const> palette, Rgb const& colour) {
    auto const closer = [&colour](Rgb const& a, Rgb const& b) {
        return distance2(a, colour) < distance2(b, colour);
    };
    return static_cast<std::size_t>(std::min_element(palette.begin(), palette.end(), closer) -
                                    palette.begin());
}

// Moves each colour to the mean of the bins that it is nearest to.
void settle(std::vector<Rgb>& palette, std::vector<Bin>& bins) {
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

std::vector<Rgb> choose_colours(SDL_Surface* picture) {
    std::vector<Bin> bins = histogram(picture);
    std::vector<Rgb> palette = cut(bins);
    for (int round = 0; round < SETTLING_ROUNDS; ++round) settle(palette, bins);
    for (Rgb& colour : palette) {
        for (double& channel : colour) channel = std::round(channel);
    }
    return palette;
}

// The nearest colour, remembered for all colours that have the same upper bits.
class Search {
public:
    explicit Search(std::span<Rgb const> palette)
        : palette_(palette), known_(std::size_t{1} << (3 * KEY_BITS), UNKNOWN) {}

    std::uint8_t operator()(Rgb const& colour) {
        std::uint32_t packed = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            packed |= static_cast<std::uint32_t>(colour[i]) << (8 * i);
        }
        std::int16_t& entry = known_[key_of(packed, KEY_BITS)];
        if (entry == UNKNOWN) entry = static_cast<std::int16_t>(nearest(palette_, colour));
        return static_cast<std::uint8_t>(entry);
    }

private:
    static constexpr std::int16_t UNKNOWN = -1;
    std::span<Rgb const> palette_;
    std::vector<std::int16_t> known_;
};

// One row; `errors` holds what it inherits and takes what the next row does, with a spare entry on
// either side.
void dither_row(std::span<std::uint32_t const> pixels, std::uint8_t* out,
                std::span<Rgb const> palette, Search& search, std::vector<Rgb>& errors) {
    std::vector<Rgb> below(errors.size());
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        Rgb wanted = unpacked(pixels[x]);
        for (std::size_t i = 0; i < 3; ++i) {
            wanted[i] = std::clamp(wanted[i] + errors[x + 1][i], 0.0, 255.0);
        }
        out[x] = search(wanted);
        for (std::size_t i = 0; i < 3; ++i) {
            double const share = (wanted[i] - palette[out[x]][i]) / 16.0;
            errors[x + 2][i] += 7.0 * share;
            below[x][i] += 3.0 * share;
            below[x + 1][i] += 5.0 * share;
            below[x + 2][i] += share;
        }
    }
    errors.swap(below);
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
    Search search(palette);
    auto const width = static_cast<std::size_t>(picture->w);
    std::vector<Rgb> errors(width + 2);
    for (int y = 0; y < picture->h; ++y) {
        auto* row = static_cast<std::uint8_t*>(out->pixels) + std::ptrdiff_t{y} * out->pitch;
        dither_row(std::span(pixel_row(picture, y), width), row, palette, search, errors);
    }
    return out;
}
