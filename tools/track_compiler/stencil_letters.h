#pragma once

// The outlines of the letters that are painted on the ground; made from a font at build time.

#include "track_compiler/geometry.h"

#include <vector>

// Lengths are in heights of a capital; y grows downwards from its top.
struct StencilLetter {
    char letter = ' ';
    double advance = 0.0;                     // to the next letter's left
    std::vector<std::vector<Point>> outlines; // closed; an inner one runs the other way round
};

// Of all characters from the blank to the last sign behind the capitals, in their order.
std::vector<StencilLetter> const& stencil_letters();
