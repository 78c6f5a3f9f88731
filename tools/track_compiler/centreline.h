#pragma once

// The road as a densely sampled closed curve: straights joined by arcs, with the width, the
// curvature and the kerbs at every sample. Beside it the forks: open curves from one place of the
// road to another, sampled alike.

#include "track_compiler/course.h"
#include "track_compiler/fault.h"

#include <cstddef>
#include <optional>
#include <vector>

struct RoadSample {
    Point at;
    double along = 0.0;      // cells from the first sample, in the direction of travel
    double heading = 0.0;    // radians, the direction of travel
    double half_width = 0.0; // of the road
    double curvature = 0.0;  // 1 / radius, positive in a right-hand bend
    double kerb_left = 0.0;  // depth of the kerb beyond the road's edge, 0 for none
    double kerb_right = 0.0;
    bool plain = false; // its corner asks for no kerbs
    int line = 0;       // of the description: the corner that it belongs to
};

// `along` of a fork's first sample: the forks' stretches lie beyond any road's length.
constexpr double FORK_ALONG = 65536.0;
constexpr double FORK_SPAN = 8192.0; // from one fork to the next

struct Centreline {
    std::vector<RoadSample> samples; // closed: the last is followed by the first
    double length = 0.0;
    std::vector<std::vector<RoadSample>> forks = {}; // open, each at least two samples

    // The sample nearest to a distance along the line; any number, also below 0.
    [[nodiscard]] std::size_t index_at(double along) const;
    [[nodiscard]] RoadSample const& at(double along) const { return samples[index_at(along)]; }

    // Depths of the kerbs left and right of a place on the road or on a fork, between samples.
    [[nodiscard]] double kerb_at(double along, bool left) const;
};

// Lays the line through the course's points. A corner that does not fit goes into `faults`.
std::optional<Centreline> build_centreline(Course const& course, Faults& faults);

// The sample nearest to a place.
RoadSample const& nearest_sample(Centreline const& line, Point place);

// Distance along the line from one sample to another, brought into minus to plus half the length.
double along_difference(Centreline const& line, double from, double to);
