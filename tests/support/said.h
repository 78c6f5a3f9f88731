#pragma once

// What a piece of the program says while it runs.

#include <gtest/gtest.h>

#include <string>

template <typename Action>
std::string output_of(Action const& action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

template <typename Action>
std::string errors_of(Action const& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}
