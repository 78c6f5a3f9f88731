#include "track_compiler/ground_plan.h"

#include <cmath>

namespace {

constexpr double STRIPE = 9.0; // cells of one colour along a kerb

} // namespace

Surface surface_at(Centreline const& line, RoadPlace const& place, double rim_width) {
    if (place.edge <= 0.0) return Surface::road;
    if (place.edge > 16.0) return Surface::land; // no kerb and rim reach that far
    double const kerb = kerb_depth_at(line, place.along, place.lateral);
    if (place.edge <= kerb) {
        bool const odd = std::fmod(std::floor(place.along / STRIPE), 2.0) != 0.0;
        return odd ? Surface::kerb_red : Surface::kerb_white;
    }
    return place.edge <= kerb + rim_width ? Surface::rim : Surface::land;
}
