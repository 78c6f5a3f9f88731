#pragma once

// The words by which descriptions and themes call things.

#include "track_compiler/course.h"

#include <string_view>

struct KindWord {
    std::string_view word;
    SceneryKind kind;
    bool round; // given by one diameter instead of length, width and angle
};

// Null if there is no such kind.
KindWord const* find_kind(std::string_view word);
