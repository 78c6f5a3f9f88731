#include "track_compiler/compile_course.h"

#include "track_compiler/course_checks.h"
#include "track_compiler/grid_writer.h"
#include "track_compiler/racing_line.h"
#include "track_compiler/scenery.h"

#include <utility>

std::optional<CompiledCourse> compile_course(Course course, Theme const& theme, double reach,
                                             Faults& faults) {
    std::optional<Centreline> line = build_centreline(course, faults);
    if (!line) return std::nullopt;
    double const border = course.kerb_depth + theme.rim_width;
    check_road(course, *line, border, faults);
    if (!faults.empty()) return std::nullopt;
    CompiledCourse made{.course = std::move(course), .theme = theme, .line = *std::move(line)};
    made.field = measure_road(made.line, made.course.width, made.course.height, reach);
    made.track = make_grid(made.course, made.line, made.field, theme.rim_width);
    check_grid(made.course, made.line, made.track, faults);
    made.items = place_scenery(made.course, made.theme, made.line, made.field, faults);
    if (!faults.empty()) return std::nullopt;
    made.racing = racing_offsets(made.line);
    return made;
}
