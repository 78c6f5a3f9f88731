#pragma once

// The ground's slow changes of tone. They are measured once on a coarse lattice and then looked up
// together, as every pixel of the land wants all of them.

#include "track_compiler/geometry.h"

#include <vector>

struct Tones {
    float light = 0.0F;  // 0..1, from the dark ground to the light one
    float grove = 0.0F;  // 0..1, shade under trees
    float dense = 0.0F;  // 0..1, of tufts
    float drift = 0.0F;  // 0..1, of flowers
    float bend_x = 0.0F; // cells by which nature's outlines are bent
    float bend_y = 0.0F;
};

struct ToneField {
    int width = 0; // of the lattice
    int height = 0;
    std::vector<Tones> tones = {};
};

// `width` and `height` of the grid.
ToneField measure_tones(int width, int height);

// Interpolated; any place on the grid.
Tones tones_at(ToneField const& field, Point place);
