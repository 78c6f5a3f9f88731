#pragma once

// The exact area average of a picture, made as its rows come in. Each output pixel is the mean of
// what lies under it, weighted by the area that it covers of each source pixel, and by alpha so
// that transparent pixels lend no colour to an edge.

#include <SDL.h>

#include <cstdint>
#include <vector>

class BoxReducer {
public:
    // `out` has PIXEL_FORMAT, all pixels 0, and is filled from the top; it stays the caller's and
    // in reach as long as rows are added.
    BoxReducer(int source_w, int source_h, SDL_Surface* out);

    // The source's next row in PIXEL_FORMAT, from the top; as many rows as the source is high.
    void add_row(std::uint32_t const* row);

private:
    // The source pixels under one output pixel, along one axis.
    struct Span {
        double start;
        double end;
        int first; // whole pixels that the span touches: [first, last)
        int last;
    };
    // Over the source pixels of one output pixel. The colours are weighted by alpha, too.
    struct Sums {
        double area = 0.0;
        double alpha = 0.0;
        double red = 0.0;
        double green = 0.0;
        double blue = 0.0;
    };

    static Span span_of(int position, double step, int source_size);
    static double overlap(Span const& span, int position);
    static std::uint32_t average(Sums const& sums);
    void add_to_sums(std::uint32_t const* row, double overlap_y);
    void finish_row();

    SDL_Surface* out_;
    int source_h_;
    double step_y_;
    int source_row_ = 0; // the next to come
    int out_row_ = 0;    // the one that is being summed up
    std::vector<Sums> sums_;
    // Along a row, one output pixel's source pixels after the other's.
    std::vector<Span> columns_;
    std::vector<double> overlaps_;
};
