#include "screens/edge_points.h"

#include "render/image.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

// Brightest channel times alpha above which a pixel belongs to a bright part: 90 of 255, opaque.
constexpr int LIT_LEVEL = 22949;
constexpr int SOLID = 1;      // reach of the box that keeps points off thin strokes
constexpr int RIM = 4;        // reach of the box that is full inside the bright part, off the rim
constexpr int AROUND = 14;    // reach of the box that tells a shape from a stray speck
constexpr int MIN_SHARE = 25; // per cent of that box that must be lit

bool is_lit(std::uint8_t const* pixel) {
    return std::max({pixel[0], pixel[1], pixel[2]}) * pixel[3] > LIT_LEVEL;
}

// Counts of lit pixels above and left of every corner, so that any box is counted in four reads.
class LitCounts {
public:
    explicit LitCounts(SDL_Surface const& image)
        : w_(image.w), h_(image.h),
          sums_(static_cast<std::size_t>(w_ + 1) * static_cast<std::size_t>(h_ + 1)) {
        auto const* pixels = static_cast<std::uint8_t const*>(image.pixels);
        for (int y = 0; y < h_; ++y) {
            std::uint8_t const* row = pixels + static_cast<std::ptrdiff_t>(y) * image.pitch;
            int in_row = 0;
            for (int x = 0; x < w_; ++x) {
                in_row += is_lit(row + static_cast<std::ptrdiff_t>(x) * 4) ? 1 : 0;
                sums_[at(x + 1, y + 1)] = sums_[at(x + 1, y)] + in_row;
            }
        }
    }

    // Lit pixels of columns x0 to x1 - 1 and rows y0 to y1 - 1, all within the picture.
    [[nodiscard]] int count(int x0, int y0, int x1, int y1) const {
        return sums_[at(x1, y1)] - sums_[at(x0, y1)] - sums_[at(x1, y0)] + sums_[at(x0, y0)];
    }

    // Whether the box of this reach around (x, y) lies inside the picture and is lit all over.
    [[nodiscard]] bool full(int x, int y, int reach) const {
        if (x < reach || y < reach || x + reach >= w_ || y + reach >= h_) return false;
        int const side = 2 * reach + 1;
        return count(x - reach, y - reach, x + reach + 1, y + reach + 1) == side * side;
    }

    // Whether enough of the wide box around (x, y), clipped to the picture, is lit.
    [[nodiscard]] bool within_a_shape(int x, int y) const {
        int const x0 = std::max(0, x - AROUND);
        int const y0 = std::max(0, y - AROUND);
        int const x1 = std::min(w_, x + AROUND + 1);
        int const y1 = std::min(h_, y + AROUND + 1);
        return count(x0, y0, x1, y1) * 100 >= (x1 - x0) * (y1 - y0) * MIN_SHARE;
    }

private:
    [[nodiscard]] std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(w_ + 1) +
               static_cast<std::size_t>(x);
    }

    int w_;
    int h_;
    std::vector<int> sums_;
};

} // namespace

std::vector<SDL_Point> build_edge_points(SDL_Surface* image) {
    std::vector<SDL_Point> points;
    SurfaceHandle const copy = to_pixel_format(image);
    if (!copy) return points;
    PixelLock const lock(copy.get());
    if (!lock) return points;
    LitCounts const lit(*copy);
    for (int y = 0; y < copy->h; ++y) {
        for (int x = 0; x < copy->w; ++x) {
            // A full box of three by three has a lit centre.
            if (lit.full(x, y, SOLID) && !lit.full(x, y, RIM) && lit.within_a_shape(x, y)) {
                points.push_back({x, y});
            }
        }
    }
    return points;
}
