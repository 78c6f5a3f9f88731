#pragma once

// From a course description on disk to the two files that the game loads. Whatever is wrong goes to
// standard error as FILE:LINE: cause.

#include "track_compiler/course.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

// The course of a file; nothing, with its faults told, if its form is wrong.
std::optional<Course> read_course(std::string const& path);

// Told what the work is at now. The longest step takes some seconds.
using Progress = void (*)(char const* step);

// Makes STEM.png and then STEM.trk from `course`, read from `course_path`, and its theme, which is
// looked for in `themes`, the first folder that has it. False, with the reason told, for a course
// that cannot be raced or a file that cannot be written.
bool make_track(Course course, std::string const& course_path,
                std::vector<std::filesystem::path> const& themes, std::string const& stem,
                Progress progress = nullptr);
