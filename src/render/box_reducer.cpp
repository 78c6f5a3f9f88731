#include "render/box_reducer.h"

#include "render/image.h"

#include <algorithm>
#include <cmath>

// The order of the additions is part of the result, as sums are cut to whole bytes: for each output
// pixel row by row, and from left to right within a row.

BoxReducer::Span BoxReducer::span_of(int position, double step, int source_size) {
    double const start = position * step;
    double const end = start + step;
    return {start, end, static_cast<int>(std::floor(start)),
            std::min(source_size, static_cast<int>(std::ceil(end)))};
}

// Length of `span` that lies within the source pixel at `position`.
double BoxReducer::overlap(Span const& span, int position) {
    double const length =
        std::min(span.end, position + 1.0) - std::max(span.start, static_cast<double>(position));
    return std::max(length, 0.0);
}

BoxReducer::BoxReducer(int source_w, int source_h, SDL_Surface* out)
    : out_(out), source_h_(source_h), step_y_(static_cast<double>(source_h) / out->h),
      sums_(static_cast<std::size_t>(out->w)) {
    double const step_x = static_cast<double>(source_w) / out->w;
    for (int i = 0; i < out->w; ++i) {
        Span const span = span_of(i, step_x, source_w);
        columns_.push_back(span);
        for (int x = span.first; x < span.last; ++x) overlaps_.push_back(overlap(span, x));
    }
}

void BoxReducer::add_row(std::uint32_t const* row) {
    int const y = source_row_++;
    while (out_row_ < out_->h) {
        Span const rows = span_of(out_row_, step_y_, source_h_);
        if (y < rows.first) return;
        double const overlap_y = overlap(rows, y);
        if (overlap_y > 0.0) add_to_sums(row, overlap_y);
        if (y + 1 < rows.last) return;
        finish_row(); // the next output row may take its share of this source row, too
    }
}

void BoxReducer::add_to_sums(std::uint32_t const* row, double overlap_y) {
    double const* overlap_x = overlaps_.data();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        Sums sums = sums_[i]; // in registers for the length of the span
        for (int x = columns_[i].first; x < columns_[i].last; ++x) {
            std::uint32_t const pixel = row[x];
            double const weight = *overlap_x++ * overlap_y;
            double const alpha_weight = static_cast<int>(pixel >> 24U) * weight;
            sums.area += weight;
            sums.alpha += alpha_weight;
            sums.red += static_cast<int>(pixel & 0xFFU) * alpha_weight;
            sums.green += static_cast<int>(pixel >> 8U & 0xFFU) * alpha_weight;
            sums.blue += static_cast<int>(pixel >> 16U & 0xFFU) * alpha_weight;
        }
        sums_[i] = sums;
    }
}

std::uint32_t BoxReducer::average(Sums const& sums) {
    if (sums.alpha <= 0.0) return 0;
    auto const to_byte = [](double value) {
        return static_cast<std::uint32_t>(std::clamp(value, 0.0, 255.0));
    };
    return to_byte(sums.red / sums.alpha) | to_byte(sums.green / sums.alpha) << 8U |
           to_byte(sums.blue / sums.alpha) << 16U | to_byte(sums.alpha / sums.area) << 24U;
}

void BoxReducer::finish_row() {
    std::transform(sums_.begin(), sums_.end(), pixel_row(out_, out_row_), average);
    std::fill(sums_.begin(), sums_.end(), Sums{});
    ++out_row_;
}
