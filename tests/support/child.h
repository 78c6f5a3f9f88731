#pragma once

// Runs a piece of the program in a process of its own, for what ends the process or never ends.

#include <functional>
#include <string>

struct ChildResult {
    int status = -1; // exit status, -1 if a signal ended it
    std::string out; // all of standard output
    std::string err; // all of standard error
};

// A child that returns from `body` ends with status 0; one that hangs is stopped after a minute.
ChildResult run_child(std::function<void()> const& body);
