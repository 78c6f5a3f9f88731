#pragma once

// Runs a piece of the program in a process of its own, for what ends the process, never ends, or
// may take much memory.

#include <functional>
#include <string>

struct ChildResult {
    int status = -1;    // exit status, -1 if a signal ended it
    std::string out;    // all of standard output
    std::string err;    // all of standard error
    long memory_kb = 0; // the most that it has held at a time
};

// A child that returns from `body` ends with status 0; one that hangs is stopped after a minute.
ChildResult run_child(std::function<void()> const& body);
