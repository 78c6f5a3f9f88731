#pragma once

// Reads a course description. docs/making-a-track.md tells every field.

#include "track_compiler/course.h"
#include "track_compiler/fault.h"

#include <optional>
#include <string_view>

// The course that `text` describes. Everything wrong with its form goes into `faults`, and then
// there is no course.
std::optional<Course> parse_course(std::string_view text, Faults& faults);
