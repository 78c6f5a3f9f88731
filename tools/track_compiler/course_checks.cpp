#include "track_compiler/course_checks.h"

#include "track_compiler/lane_field.h"
#include "track_compiler/scenery.h"
#include "track_compiler/stencil.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

namespace {

constexpr double ROAD_GAP = 14.0;   // cells between two stretches of road
constexpr double GRID_MARGIN = 2.0; // cells between the road's rim and the grid's edge
constexpr double MAX_PAST = 40.0;   // the start lies this far past the line at most
constexpr double MIN_PAST = 2.0;    // and this far at least
constexpr double RUN_UP = 200.0;    // what a flying start wants behind the start cell
constexpr double CAR_OFFSET = 8.0;  // the cars stand this far to the sides of the start
constexpr double STRAIGHT = 0.01;   // radians from level or upright that pass as straight
constexpr double FLOOD_SHARE = 0.5; // of the line's length that a lap's flood has at least

std::string place_text(Point place) {
    return std::to_string(std::lround(place.x)) + " " + std::to_string(std::lround(place.y));
}

bool off_grid(Course const& course, RoadSample const& sample, double border) {
    double const reach = sample.half_width + border + GRID_MARGIN;
    return sample.at.x < reach || sample.at.y < reach || sample.at.x > course.width - reach ||
           sample.at.y > course.height - reach;
}

void check_on_grid(Course const& course, Centreline const& line, double border, Faults& faults) {
    auto const check = [&](RoadSample const& sample) {
        bool const told = !faults.empty() && faults.back().line == sample.line;
        if (told || !off_grid(course, sample, border)) return;
        faults.push_back({sample.line, "the road runs off the grid near " + place_text(sample.at)});
    };
    for (RoadSample const& sample : line.samples) check(sample);
    for (std::vector<RoadSample> const& fork : line.forks) {
        for (RoadSample const& sample : fork) check(sample);
    }
}

void check_apart(Centreline const& line, Faults& faults) {
    constexpr std::size_t STRIDE = 3;
    for (std::size_t i = 0; i < line.samples.size(); i += STRIDE) {
        RoadSample const& a = line.samples[i];
        for (std::size_t j = i + STRIDE; j < line.samples.size(); j += STRIDE) {
            RoadSample const& b = line.samples[j];
            double const apart = a.half_width + b.half_width + ROAD_GAP;
            if (std::fabs(along_difference(line, a.along, b.along)) < 1.8 * apart) continue;
            if (distance(a.at, b.at) >= apart) continue;
            faults.push_back(
                {b.line, "the road is broken: it runs into itself near " + place_text(b.at)});
            return;
        }
    }
}

// A fork leaves the road and comes back to it further on, well away from the goal line; between its
// ends it keeps clear of all other stretches.
void check_fork(Course const& course, Centreline const& line, std::vector<RoadSample> const& fork,
                Faults& faults) {
    auto const fault = [&](std::string cause) {
        faults.push_back({fork.front().line, "fork: " + std::move(cause)});
    };
    RoadSample const& from = nearest_sample(line, fork.front().at);
    RoadSample const& to = nearest_sample(line, fork.back().at);
    for (auto const& [end, road] :
         {std::pair(&fork.front(), &from), std::pair(&fork.back(), &to)}) {
        if (distance(end->at, road->at) + end->half_width > road->half_width + 1.0) {
            return fault("its end near " + place_text(end->at) + " does not lie within the road");
        }
    }
    if (along_difference(line, from.along, to.along) <= 0.0) {
        return fault("it does not lead forwards");
    }
    Point const goal = 0.5 * (course.goal_a + course.goal_b);
    double const middle = from.along + along_difference(line, from.along, to.along) / 2.0;
    double const reach = along_difference(line, from.along, to.along) / 2.0 + RUN_UP;
    double const goal_along = nearest_sample(line, goal).along;
    if (std::fabs(along_difference(line, middle, goal_along)) < reach) {
        return fault("it lies too near to the goal line");
    }
    for (RoadSample const& a : fork) {
        for (RoadSample const& b : line.samples) {
            double const apart = a.half_width + b.half_width + ROAD_GAP;
            if (std::fabs(along_difference(line, middle, b.along)) < reach) continue;
            if (distance(a.at, b.at) < apart) return fault("it runs into the road");
        }
    }
}

// Computer drivers go where the steps from the start grow. Where two ways meet that are unlike in
// length, they would be sent back along the longer one.
void check_progress(std::vector<RoadSample> const& samples, Track const& track, Faults& faults) {
    constexpr int MAX_FALL = 12;   // steps, what the drivers do not mind
    constexpr int START_ZONE = 64; // steps, from the goal line to past the start
    int highest = -1;
    for (RoadSample const& sample : samples) {
        auto const x = static_cast<int>(std::floor(sample.at.x));
        auto const y = static_cast<int>(std::floor(sample.at.y));
        if (!track.contains(x, y)) continue;
        int const steps = track.start_distance[track.index(x, y)];
        if (steps < START_ZONE) highest = steps;
        if (steps >= highest - MAX_FALL) {
            highest = std::max(highest, steps);
            continue;
        }
        faults.push_back({sample.line, "fork: the two ways are unlike in length: a computer's "
                                       "driver would turn back near " +
                                           place_text(sample.at)});
        return;
    }
}

// The goal line is a level or upright row of `!` without a gap, with walls at both ends, straight
// across a straight road.
bool check_goal(Course const& course, Centreline const& line, Track const& track, Faults& faults) {
    auto const fault = [&](std::string cause) {
        faults.push_back({course.goal_line, "goal: " + std::move(cause)});
        return false;
    };
    bool const upright = std::floor(course.goal_a.x) == std::floor(course.goal_b.x);
    bool const level = std::floor(course.goal_a.y) == std::floor(course.goal_b.y);
    if (upright == level) return fault("the line must be level or upright");
    if (track.goal_x1 > track.goal_x2) return fault("the line does not lie on the road");
    int const dx = level ? 1 : 0;
    int const dy = level ? 0 : 1;
    for (int x = track.goal_x1, y = track.goal_y1; x <= track.goal_x2 && y <= track.goal_y2;
         x += dx, y += dy) {
        if (track.cells[track.index(x, y)] != '!') return fault("the line crosses the road twice");
    }
    bool const open = cell_is_passable(track, track.goal_x1 - dx, track.goal_y1 - dy) ||
                      cell_is_passable(track, track.goal_x2 + dx, track.goal_y2 + dy);
    if (open) return fault("the line does not close the course from wall to wall");
    Point const middle{(track.goal_x1 + track.goal_x2 + 1) / 2.0,
                       (track.goal_y1 + track.goal_y2 + 1) / 2.0};
    double const heading = nearest_sample(line, middle).heading;
    double const across = level ? std::cos(heading) : std::sin(heading);
    if (std::fabs(across) > STRAIGHT) {
        return fault("the road does not run straight across the line");
    }
    return true;
}

bool check_start(Course const& course, Centreline const& line, Track const& track, Faults& faults) {
    auto const fault = [&](std::string cause) {
        faults.push_back({course.start_line, "start: " + std::move(cause)});
        return false;
    };
    if (!track.contains(track.start_x, track.start_y)) return fault("it lies off the grid");
    RoadSample const& here = nearest_sample(line, course.start);
    if (distance(here.at, course.start) > here.half_width - CAR_OFFSET - 2.0) {
        return fault("it does not lie on the road");
    }
    Point const goal = 0.5 * (course.goal_a + course.goal_b);
    Point const forwards = direction(here.heading);
    double const past = dot(course.start - goal, forwards);
    if (past < MIN_PAST || past > MAX_PAST) {
        return fault("it must lie 2 to 40 cells past the goal line in the direction of travel, "
                     "and lies " +
                     std::to_string(std::lround(past)));
    }
    return true;
}

// A flying start moves both cars straight back; every cell of their way must be road.
void check_run_up(Course const& course, Track const& track, Faults& faults) {
    Point const ahead = direction(track.start_angle);
    Point const start{track.start_x + 0.5, track.start_y + 0.5};
    for (double back = 0.0; back <= RUN_UP; back += 0.5) {
        for (double const side : {-CAR_OFFSET, CAR_OFFSET}) {
            Point const place = start - back * ahead + side * side_of(ahead);
            int const x = static_cast<int>(std::floor(place.x));
            int const y = static_cast<int>(std::floor(place.y));
            if (track.contains(x, y) && cell_is_road(track.cells[track.index(x, y)])) continue;
            faults.push_back({course.start_line,
                              "start: no run-up: the road behind it is straight for only " +
                                  std::to_string(std::lround(back)) + " cells and needs 200"});
            return;
        }
    }
}

// What lettering would lie on.
struct Ground {
    bool whole = true; // no lane and no edge of the road
    bool road = false;
    GroundArea const* patch = nullptr;
};

Ground ground_at(Course const& course, RoadField const& field, LaneField const& lanes,
                 double border, Point at) {
    constexpr double EDGE_LINE = 6.0; // cells within the road's edge
    double const edge = road_at(field, at).edge;
    Ground ground{.road = edge <= 0.0};
    ground.whole = edge <= -EDGE_LINE || (edge > border && lane_at(lanes, at).lane == 0);
    if (ground.road) return ground;
    for (GroundArea const& area : course.areas) {
        if (inside(area, at)) ground.patch = &area;
    }
    return ground;
}

// Distances run one way round the course, so that the cells behind the line are a lap away. If
// they are not, there is a way past the line or across the course.
void check_flood(Course const& course, Centreline const& line, Track const& track, Faults& faults) {
    Point const ahead = direction(track.start_angle);
    Point const middle{(track.goal_x1 + track.goal_x2 + 1) / 2.0,
                       (track.goal_y1 + track.goal_y2 + 1) / 2.0};
    Point const behind = middle - 3.0 * ahead;
    int const x = static_cast<int>(std::floor(behind.x));
    int const y = static_cast<int>(std::floor(behind.y));
    int const lap = track.contains(x, y) ? track.start_distance[track.index(x, y)] : -1;
    if (lap >= FLOOD_SHARE * line.length) return;
    faults.push_back({course.goal_line, lap < 0 ? "goal: no road leads round from the start to it"
                                                : "goal: the line does not close the course: "
                                                  "there is a way past it"});
}

} // namespace

void check_road(Course const& course, Centreline const& line, double border, Faults& faults) {
    check_on_grid(course, line, border, faults);
    check_apart(line, faults);
    for (std::vector<RoadSample> const& fork : line.forks) check_fork(course, line, fork, faults);
}

void check_letterings(Course const& course, RoadField const& field, double border, Faults& faults) {
    LaneField const lanes = measure_lanes(course, course.width, course.height);
    for (Lettering const& lettering : course.letterings) {
        Ground const first = ground_at(course, field, lanes, border, lettering.at);
        double const wide = lettering.height * stencil_width(lettering.text);
        bool even = first.whole;
        for (double y = -0.6; y <= 0.6; y += 0.2) {
            for (double x = -0.52; x <= 0.52; x += 0.02) {
                Point const at = lettering.at + Point{x * wide, y * lettering.height};
                Ground const here = ground_at(course, field, lanes, border, at);
                even = even && here.whole && here.road == first.road && here.patch == first.patch;
            }
        }
        if (even) continue;
        faults.push_back({lettering.line, "lettering: an edge or a lane runs through it"});
    }
}

void check_grid(Course const& course, Centreline const& line, Track const& track, Faults& faults) {
    if (!check_goal(course, line, track, faults)) return;
    if (!check_start(course, line, track, faults)) return;
    check_run_up(course, track, faults);
    check_flood(course, line, track, faults);
    if (!faults.empty() || line.forks.empty()) return;
    check_progress(line.samples, track, faults);
    for (std::vector<RoadSample> const& fork : line.forks) check_progress(fork, track, faults);
}
