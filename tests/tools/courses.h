#pragma once

// A small course for tests to break, and a theme in which road, rim, land and kerbs differ in
// their strongest colours whatever light and texture do to them.

#include "track_compiler/compile_course.h"

#include <string>

// A valid description: a rounded rectangle driven clockwise, with kerbs; 13 lines of text.
std::string small_course();

// `text` with its first `what` replaced. The test fails if there is no such text.
std::string replaced(std::string text, std::string const& what, std::string const& with);

// Road red, rim blue, land green, kerbs yellow and magenta; no texture, no shadows.
Theme plain_theme();

// Parses and compiles; faults of both.
std::optional<CompiledCourse> compile_text(std::string const& text, Faults& faults);
