#pragma once

// Where the patches of other ground lie, on a lattice, so that a pixel need not ask each of them.

#include "track_compiler/course.h"

#include <cstdint>
#include <vector>

constexpr double AREA_STEP = 2.0; // cells from one measured place to the next

struct AreaField {
    int width = 0; // in steps
    int height = 0;
    std::vector<std::uint16_t> area = {}; // 1 + index of the patch that counts here, 0 for none
    std::vector<float> depth = {};        // cells inside its outline, negative outside
};

// A place with respect to the patch that counts there.
struct AreaPlace {
    GroundArea const* area = nullptr; // null if there is none in sight
    double depth = 0.0;
};

// `width` and `height` of the grid.
AreaField measure_areas(Course const& course, int width, int height);

// Interpolated; any place.
AreaPlace area_at(AreaField const& field, Course const& course, Point place);
