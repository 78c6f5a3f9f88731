#pragma once

// Lettering as it is sprayed through a stencil: a real font's capitals, figures and signs, with
// bridges that hold the insides of O and R in place. All lengths are in heights of a capital.

#include "track_compiler/geometry.h"

#include <string_view>

// Small letters count as capitals; a byte that the stencil does not have is a blank.
double stencil_width(std::string_view text);

// Distance of a place to the nearest paint, negative within it, from the text's upper left corner.
// Exact near the paint only.
double stencil_outside(std::string_view text, Point at);
