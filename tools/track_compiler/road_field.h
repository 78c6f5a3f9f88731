#pragma once

// Where every cell lies with respect to the road. Grid and picture both read it, so that they
// agree to the cell.

#include "track_compiler/centreline.h"

#include <cstddef>
#include <vector>

// Values at the cells' centres, row by row. Cells further from the road than `reach` hold `reach`
// as their edge distance and nothing of use in the others.
struct RoadField {
    int width = 0;
    int height = 0;
    float reach = 0.0F;              // cells beyond the road's edge that are measured
    std::vector<float> edge = {};    // distance to the road's edge, negative on the road
    std::vector<float> along = {};   // distance along the centre line of the nearest place on it
    std::vector<float> lateral = {}; // distance from the centre line, positive to its right

    [[nodiscard]] std::size_t index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(column);
    }
};

// The field at a place between cell centres.
struct RoadPlace {
    double edge = 0.0;
    double along = 0.0;
    double lateral = 0.0;
};

// Of the road alone, without its forks.
RoadField measure_road(Centreline const& line, int width, int height, double reach);

// Brings the forks to bear on the field of their road.
void add_forks(Centreline const& line, RoadField& field);

// Interpolated between the four nearest cell centres; any place, also beyond the grid.
RoadPlace road_at(RoadField const& field, Point place);

// Depth of the kerb beside a place, by the side of the road that it lies on.
double kerb_depth_at(Centreline const& line, double along, double lateral);
