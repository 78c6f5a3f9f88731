#pragma once

// What a check found: one line for each thing looked at, and how many were wrong.

#include <string>

class Report {
public:
    // Prints "ok" or "WRONG" with the thing's name and what was measured or is missing.
    void add(bool good, std::string const& thing, std::string const& found);
    [[nodiscard]] int passed() const { return passed_; }
    [[nodiscard]] int failed() const { return failed_; }

private:
    int passed_ = 0;
    int failed_ = 0;
};
