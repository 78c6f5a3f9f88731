#include "track_compiler/compile_course.h"

#include "track_compiler/course_checks.h"
#include "track_compiler/grid_writer.h"
#include "track_compiler/racing_line.h"
#include "track_compiler/scenery.h"
#include "track_compiler/start_furniture.h"

#include <algorithm>
#include <utility>

namespace {

// Nature has no corners: each is cut off at a quarter of its sides, twice.
void round_off(GroundArea& area) {
    for (int round = 0; round < 2; ++round) {
        std::vector<Point> rounded;
        for (std::size_t i = 0; i < area.corners.size(); ++i) {
            Point const a = area.corners[i];
            Point const b = area.corners[(i + 1) % area.corners.size()];
            rounded.push_back(a + 0.25 * (b - a));
            rounded.push_back(a + 0.75 * (b - a));
        }
        area.corners = std::move(rounded);
    }
}

void round_off_nature(Course& course, Theme const& theme) {
    for (GroundArea& area : course.areas) {
        bool const built = area.kind == GroundKind::plaza || area.kind == GroundKind::field ||
                           (area.kind == GroundKind::water && theme.quay > 0.0);
        if (!built) round_off(area);
    }
}

} // namespace

std::optional<CompiledCourse> compile_course(Course course, Theme const& theme, double reach,
                                             Faults& faults) {
    std::optional<Centreline> line = build_centreline(course, faults);
    if (!line) return std::nullopt;
    double border = course.kerb_depth + theme.rim_width;
    for (Fork const& fork : course.forks) {
        border = std::max(border, fork.kerb_depth + theme.rim_width);
    }
    check_road(course, *line, border, faults);
    if (!faults.empty()) return std::nullopt;
    round_off_nature(course, theme);
    CompiledCourse made{.course = std::move(course), .theme = theme, .line = *std::move(line)};
    made.main_road = measure_road(made.line, made.course.width, made.course.height, reach);
    made.field = made.main_road;
    add_forks(made.line, made.field);
    made.track = make_grid(made.course, made.line, made.field, theme.rim_width);
    check_grid(made.course, made.line, made.track, faults);
    check_letterings(made.course, made.field, border, faults);
    add_start_furniture(made.course, made.theme, made.track, made.field);
    made.items = place_scenery(made.course, made.theme, made.line, made.field, faults);
    if (!faults.empty()) return std::nullopt;
    made.racing = racing_offsets(made.line);
    return made;
}
