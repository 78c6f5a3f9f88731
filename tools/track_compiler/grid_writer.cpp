#include "track_compiler/grid_writer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

std::uint8_t cell_of(Surface surface) {
    switch (surface) {
    case Surface::road:
        return '.';
    case Surface::kerb_red:
        return 'r';
    case Surface::kerb_white:
        return 'w';
    case Surface::rim:
        return 'b';
    case Surface::land:
        return 'g';
    }
    return 'g';
}

void fill_cells(Centreline const& line, RoadField const& field, double rim_width, Track& track) {
    for (int y = 0; y < track.height; ++y) {
        for (int x = 0; x < track.width; ++x) {
            std::size_t const at = track.index(x, y);
            RoadPlace const place{static_cast<double>(field.edge[at]),
                                  static_cast<double>(field.along[at]),
                                  static_cast<double>(field.lateral[at])};
            track.cells[at] = cell_of(surface_at(line, place, rim_width));
        }
    }
}

// A kerb cell that the game takes for wall, as it is too far from the road, becomes rim.
void drop_solid_kerbs(Track& track) {
    for (std::size_t at = 0; at < track.cells.size(); ++at) {
        bool const kerb = track.cells[at] == 'r' || track.cells[at] == 'w';
        if (kerb && track.grass_distance[at] > KERB_REACH) track.cells[at] = 'b';
    }
}

void mark_goal(Course const& course, Track& track) {
    auto const cell = [](double value) { return static_cast<int>(std::floor(value)); };
    int const x1 = cell(std::min(course.goal_a.x, course.goal_b.x));
    int const x2 = cell(std::max(course.goal_a.x, course.goal_b.x));
    int const y1 = cell(std::min(course.goal_a.y, course.goal_b.y));
    int const y2 = cell(std::max(course.goal_a.y, course.goal_b.y));
    for (int y = std::max(0, y1); y <= std::min(y2, track.height - 1); ++y) {
        for (int x = std::max(0, x1); x <= std::min(x2, track.width - 1); ++x) {
            if (cell_is_passable(track, x, y)) track.cells[track.index(x, y)] = '!';
        }
    }
}

void mark_start(Course const& course, Track& track) {
    track.start_x = static_cast<int>(std::floor(course.start.x));
    track.start_y = static_cast<int>(std::floor(course.start.y));
    if (track.contains(track.start_x, track.start_y)) {
        track.cells[track.index(track.start_x, track.start_y)] = '*';
    }
    find_goal_line(track);
    head_from_goal(track);
}

} // namespace

Track make_grid(Course const& course, Centreline const& line, RoadField const& field,
                double rim_width) {
    Track track;
    track.width = field.width;
    track.height = field.height;
    track.cells.assign(field.edge.size(), 'g');
    fill_cells(line, field, rim_width, track);
    track.compute_grass_distance();
    drop_solid_kerbs(track);
    mark_goal(course, track);
    mark_start(course, track);
    track.compute_grass_distance();
    track.compute_start_distance();
    return track;
}

std::string track_file_text(Track const& track) {
    std::string text = std::to_string(track.width) + " " + std::to_string(track.height) + "\n";
    auto const width = static_cast<std::ptrdiff_t>(track.width);
    for (int y = 0; y < track.height; ++y) {
        auto const row = track.cells.begin() + static_cast<std::ptrdiff_t>(track.index(0, y));
        text.append(row, row + width);
        text += '\n';
    }
    return text;
}
