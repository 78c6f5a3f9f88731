#pragma once

// Block letters for the ground: capitals, digits and a few signs on a raster of 5 by 7.

#include <string>

constexpr double STENCIL_ASPECT = 6.0 / 7.0; // advance of a letter by its height

// Is there paint at (x, y) of the text, measured from its upper left corner in letter heights?
// Letters that the stencil does not have are blank.
bool stencil_covers(std::string const& text, double x, double y);
