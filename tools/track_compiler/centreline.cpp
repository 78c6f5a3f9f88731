#include "track_compiler/centreline.h"

#include "track_compiler/way.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace {

constexpr double STEP = 4.0;        // cells between samples
constexpr double MIN_RADIUS = 30.0; // what the slowest car still turns in
constexpr double KERB_LEAD = 24.0;  // cells that a kerb begins before and ends behind its arc
constexpr double KERB_EXIT = 110.0; // cells of kerb on the outside of an exit
constexpr double KERB_TAPER = 14.0; // cells in which a kerb grows to its depth
constexpr double GOAL_CLEAR = 60.0; // no kerbs this close to the goal line

// One corner of the polygon and the arc that rounds it.
struct Corner {
    Point in;          // direction towards the corner
    Point out;         // direction away from it
    double turn = 0.0; // radians, positive to the right
    double radius = 0.0;
    double cut = 0.0; // what the arc takes off both legs
    double leg = 0.0; // length of the leg that leaves the corner
};

// A straight or an arc, `length` cells long.
struct Piece {
    Point from;
    double heading = 0.0;
    double curvature = 0.0;
    double length = 0.0;
    std::size_t corner = 0;
};

std::size_t next_of(std::size_t index, std::size_t count) {
    return (index + 1) % count;
}
std::size_t prev_of(std::size_t index, std::size_t count) {
    return (index + count - 1) % count;
}

double cut_per_radius(Corner const& corner) {
    return std::tan(std::fabs(corner.turn) / 2.0);
}

std::vector<Corner> measure_corners(Course const& course, Faults& faults) {
    std::size_t const count = course.points.size();
    std::vector<Corner> corners(count);
    for (std::size_t i = 0; i < count; ++i) {
        Point const here = course.points[i].at;
        Point const before = course.points[prev_of(i, count)].at;
        Point const after = course.points[next_of(i, count)].at;
        Corner& corner = corners[i];
        corner.leg = distance(here, after);
        if (distance(before, here) < STEP) {
            faults.push_back(
                {course.points[i].line, "the road is broken: two points in one place"});
            return corners;
        }
        corner.in = 1.0 / distance(before, here) * (here - before);
        corner.out = 1.0 / std::max(corner.leg, TINY_LENGTH) * (after - here);
        corner.turn = std::atan2(cross(corner.in, corner.out), dot(corner.in, corner.out));
        if (std::fabs(corner.turn) > 0.95 * std::numbers::pi) {
            faults.push_back({course.points[i].line,
                              "the road is broken: it turns back on itself here (make a hairpin "
                              "from two points)"});
        }
    }
    return corners;
}

// Given radii first: they stand. The others share what is left of their legs.
void fit_radii(Course const& course, std::vector<Corner>& corners) {
    std::size_t const count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!course.points[i].radius_given) continue;
        corners[i].radius = course.points[i].radius;
        corners[i].cut = corners[i].radius * cut_per_radius(corners[i]);
    }
    std::vector<Corner> fitted = corners;
    for (std::size_t i = 0; i < count; ++i) {
        if (course.points[i].radius_given) continue;
        std::size_t const before = prev_of(i, count);
        std::size_t const after = next_of(i, count);
        auto const room = [&](std::size_t neighbour, double leg) {
            return course.points[neighbour].radius_given ? leg - corners[neighbour].cut : leg / 2.0;
        };
        double const cut =
            std::max(0.0, std::min(room(before, corners[before].leg), room(after, corners[i].leg)));
        double const per_radius = std::max(cut_per_radius(corners[i]), 1e-9);
        fitted[i].radius = std::min(course.points[i].radius, cut / per_radius);
        fitted[i].cut = fitted[i].radius * cut_per_radius(corners[i]);
    }
    corners = std::move(fitted);
}

void check_fit(Course const& course, std::vector<Corner> const& corners, Faults& faults) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Corner const& after = corners[next_of(i, corners.size())];
        if (corners[i].cut + after.cut <= corners[i].leg + 0.01) continue;
        faults.push_back({course.points[i].line,
                          "the road is broken: this corner's arc and the next one's do not fit on "
                          "the " +
                              std::to_string(std::lround(corners[i].leg)) + " cells between them"});
    }
}

void check_tightness(Course const& course, std::vector<Corner> const& corners, Faults& faults) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (std::fabs(corners[i].turn) <= 0.02 || corners[i].radius >= MIN_RADIUS) continue;
        faults.push_back(
            {course.points[i].line, "the corner is too tight: its radius comes to " +
                                        std::to_string(std::lround(corners[i].radius)) +
                                        " cells and a car needs 30"});
    }
}

std::vector<Piece> lay_pieces(Course const& course, std::vector<Corner> const& corners) {
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Corner const& corner = corners[i];
        Corner const& after = corners[next_of(i, corners.size())];
        Point const here = course.points[i].at;
        double const heading = std::atan2(corner.in.y, corner.in.x);
        if (corner.radius > 0.0 && std::fabs(corner.turn) > 1e-9) {
            pieces.push_back({here - corner.cut * corner.in, heading,
                              std::copysign(1.0 / corner.radius, corner.turn),
                              corner.radius * std::fabs(corner.turn), i});
        }
        pieces.push_back({here + corner.cut * corner.out, heading + corner.turn, 0.0,
                          std::max(0.0, corner.leg - corner.cut - after.cut), i});
    }
    return pieces;
}

RoadSample sample_piece(Piece const& piece, double offset) {
    RoadSample sample;
    sample.curvature = piece.curvature;
    sample.heading = piece.heading + offset * piece.curvature;
    if (piece.curvature == 0.0) {
        sample.at = piece.from + offset * direction(piece.heading);
        return sample;
    }
    // Along an arc the position is the chord: its direction is half the turn so far.
    double const half_turn = offset * piece.curvature / 2.0;
    double const chord = 2.0 / piece.curvature * std::sin(half_turn);
    sample.at = piece.from + chord * direction(piece.heading + half_turn);
    return sample;
}

// Where each corner's middle lies along the line.
std::vector<double> corner_places(std::vector<Piece> const& pieces, std::size_t count) {
    std::vector<double> places(count, 0.0);
    double along = 0.0;
    for (Piece const& piece : pieces) {
        if (piece.curvature != 0.0) {
            places[piece.corner] = along + piece.length / 2.0;
        } else if (places[piece.corner] == 0.0) {
            places[piece.corner] = along;
        }
        along += piece.length;
    }
    return places;
}

double width_at(Course const& course, std::vector<double> const& places, double length,
                double along) {
    std::size_t const count = places.size();
    auto const above = std::upper_bound(places.begin(), places.end(), along);
    std::size_t const after =
        static_cast<std::size_t>(above - places.begin()) % count; // wraps past the last corner
    std::size_t const before = prev_of(after, count);
    double span = places[after] - places[before];
    double done = along - places[before];
    if (span <= 0.0) span += length;
    if (done < 0.0) done += length;
    double const t = smoothstep(0.0, std::max(span, 1e-9), done);
    return course.points[before].width * (1.0 - t) + course.points[after].width * t;
}

Centreline sample_pieces(Course const& course, std::vector<Piece> const& pieces) {
    Centreline line;
    for (Piece const& piece : pieces) line.length += piece.length;
    std::vector<double> const places = corner_places(pieces, course.points.size());
    auto const count = static_cast<std::size_t>(std::max(3.0, std::round(line.length / STEP)));
    std::size_t at_piece = 0;
    double piece_begin = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        double const along = line.length * static_cast<double>(i) / static_cast<double>(count);
        while (at_piece + 1 < pieces.size() && along > piece_begin + pieces[at_piece].length) {
            piece_begin += pieces[at_piece++].length;
        }
        RoadSample sample = sample_piece(pieces[at_piece], along - piece_begin);
        CoursePoint const& corner = course.points[pieces[at_piece].corner];
        sample.along = along;
        sample.half_width = width_at(course, places, line.length, along) / 2.0;
        sample.plain = corner.plain;
        sample.line = corner.line;
        line.samples.push_back(sample);
    }
    return line;
}

using Depth = double RoadSample::*;

// Lays a kerb from `from` to `to` cells along the line, growing and ending gently.
void lay_kerb(Centreline& line, Depth side, double from, double to, double depth) {
    double const step = line.length / static_cast<double>(line.samples.size());
    for (double along = from; along <= to; along += step) {
        double const edge = std::min(along - from, to - along);
        double const here = depth * std::min(1.0, edge / KERB_TAPER);
        RoadSample& sample = line.samples[line.index_at(along)];
        sample.*side = std::max(sample.*side, here);
    }
}

// Kerbs where a driver cuts: inside every tight corner, and outside where it lets him run wide.
void lay_kerbs(Course const& course, std::vector<Piece> const& pieces, Centreline& line) {
    double begin = 0.0;
    for (Piece const& piece : pieces) {
        double const end = begin + piece.length;
        bool const tight = std::fabs(piece.curvature) * course.kerb_radius > 1.0;
        if (tight && !course.points[piece.corner].plain && piece.length > KERB_LEAD) {
            bool const right = piece.curvature > 0.0;
            Depth const inside = right ? &RoadSample::kerb_right : &RoadSample::kerb_left;
            Depth const outside = right ? &RoadSample::kerb_left : &RoadSample::kerb_right;
            lay_kerb(line, inside, begin - KERB_LEAD, end + KERB_LEAD, course.kerb_depth);
            lay_kerb(line, outside, end - KERB_LEAD, end + KERB_EXIT, course.kerb_depth);
        }
        begin = end;
    }
    Point const goal = 0.5 * (course.goal_a + course.goal_b);
    double const goal_along = nearest_sample(line, goal).along;
    for (RoadSample& sample : line.samples) {
        if (std::fabs(along_difference(line, goal_along, sample.along)) > GOAL_CLEAR) continue;
        sample.kerb_left = sample.kerb_right = 0.0;
    }
}

// Its samples lie as far apart as the road's; it has neither arcs nor corners of its own.
std::vector<RoadSample> sample_fork(Fork const& fork, std::size_t number) {
    std::vector<Point> const way = smoothed_way(fork.way);
    std::vector<RoadSample> samples;
    double const begin = FORK_ALONG + FORK_SPAN * static_cast<double>(number);
    double ahead = 0.0; // from the leg's beginning to the next sample
    double along = begin;
    for (std::size_t i = 0; i + 1 < way.size(); ++i) {
        Point const leg = way[i + 1] - way[i];
        double const reach = length(leg);
        for (; ahead < reach; ahead += STEP, along += STEP) {
            samples.push_back({.at = way[i] + (ahead / reach) * leg,
                               .along = along,
                               .heading = std::atan2(leg.y, leg.x),
                               .half_width = fork.width / 2.0,
                               .kerb_left = fork.kerb_depth,
                               .kerb_right = fork.kerb_depth,
                               .line = fork.line});
        }
        ahead -= reach;
    }
    return samples;
}

} // namespace

double Centreline::kerb_at(double along, bool left) const {
    bool const on_fork = along >= FORK_ALONG;
    auto const number = static_cast<std::size_t>(on_fork ? (along - FORK_ALONG) / FORK_SPAN : 0.0);
    std::vector<RoadSample> const& stretch = on_fork ? forks[number] : samples;
    double const per_cell = on_fork ? 1.0 / STEP : static_cast<double>(samples.size()) / length;
    double const at = std::max(0.0, (along - (on_fork ? stretch[0].along : 0.0)) * per_cell);
    auto const before = static_cast<std::size_t>(at);
    auto const depth = [&](std::size_t index) {
        RoadSample const& sample = stretch[index % stretch.size()];
        return left ? sample.kerb_left : sample.kerb_right;
    };
    double const from = depth(before);
    return from + (depth(before + 1) - from) * (at - static_cast<double>(before));
}

std::size_t Centreline::index_at(double along) const {
    auto const count = static_cast<double>(samples.size());
    double const wrapped = std::fmod(std::round(along / length * count), count);
    auto const index = static_cast<std::size_t>(wrapped < 0.0 ? wrapped + count : wrapped);
    return index % samples.size();
}

std::optional<Centreline> build_centreline(Course const& course, Faults& faults) {
    std::size_t const before = faults.size();
    std::vector<Corner> corners = measure_corners(course, faults);
    if (faults.size() != before) return std::nullopt;
    fit_radii(course, corners);
    check_fit(course, corners, faults);
    if (faults.size() == before) check_tightness(course, corners, faults);
    if (faults.size() != before) return std::nullopt;
    std::vector<Piece> const pieces = lay_pieces(course, corners);
    Centreline line = sample_pieces(course, pieces);
    lay_kerbs(course, pieces, line);
    for (Fork const& fork : course.forks) {
        line.forks.push_back(sample_fork(fork, line.forks.size()));
    }
    return line;
}

RoadSample const& nearest_sample(Centreline const& line, Point place) {
    return *std::min_element(line.samples.begin(), line.samples.end(),
                             [&](RoadSample const& a, RoadSample const& b) {
                                 return distance(a.at, place) < distance(b.at, place);
                             });
}

double along_difference(Centreline const& line, double from, double to) {
    return std::remainder(to - from, line.length);
}
