#pragma once

// The course that a new track begins with: complete, raceable in every theme, and with a remark on
// each line that a beginner will want to change.

#include <string>

std::string first_course(std::string const& name, std::string const& theme);
