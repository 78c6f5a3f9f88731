#pragma once

// Block letters for the ground: capitals, digits and a few signs on a raster of 5 by 7.

#include <string>

constexpr double STENCIL_ASPECT = 6.0 / 7.0; // advance of a letter by its height

// How much of a place a line of text covers, 0..1. `x` and `y` are in heights of its letters from
// the text's upper left corner, `pixel` is a pixel's side in the same measure.
double stencil_coverage(std::string const& text, double x, double y, double pixel);
