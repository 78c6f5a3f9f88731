#pragma once

// Where the lanes beside the road run, for every cell.

#include "track_compiler/course.h"

#include <cstdint>
#include <vector>

struct LaneSpot {
    std::uint16_t lane = 0; // 1 + index of the lane, 0 for none in sight
    float off = 0.0F;       // cells from its middle
    float along = 0.0F;     // cells from its beginning
    float end = 0.0F;       // cells to its nearer end
};

struct LaneField {
    int width = 0;
    int height = 0;
    std::vector<LaneSpot> spots = {}; // empty if there are no lanes
};

LaneField measure_lanes(Course const& course, int width, int height);

// Interpolated between cells; any place. No lane if none is near.
LaneSpot lane_at(LaneField const& field, Point place);
