#pragma once

// What is wrong with a description, and on which line of its file.

#include <string>
#include <vector>

struct Fault {
    int line = 0; // from 1; 0 if it concerns the file as a whole
    std::string cause;
};

using Faults = std::vector<Fault>;
