#pragma once

// From a description to a raceable track and what is needed to paint it.

#include "track_compiler/centreline.h"
#include "track_compiler/course.h"
#include "track_compiler/fault.h"
#include "track_compiler/painter.h"
#include "track_compiler/road_field.h"
#include "track_compiler/theme.h"
#include "world/track.h"

#include <optional>
#include <string>
#include <vector>

struct CompiledCourse {
    Course course;
    Theme theme;
    Centreline line;
    RoadField main_road = {};
    RoadField field = {};
    Track track = {};
    std::vector<double> racing = {};
    std::vector<SceneryItem> items = {};

    [[nodiscard]] PaintSource paint_source() const {
        return {course, theme, line, main_road, field, track, racing, items};
    }
};

// Compiles and checks. `reach` is how far beyond the road's edge the field is measured: the grid
// needs little, the picture more. Nothing if there are faults.
std::optional<CompiledCourse> compile_course(Course course, Theme const& theme, double reach,
                                             Faults& faults);

constexpr double GRID_REACH = 40.0;
constexpr double PICTURE_REACH = 90.0;
