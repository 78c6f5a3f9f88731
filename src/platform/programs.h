#pragma once

// How other programs are called, in each system's own way. All words are UTF-8.

#include <string>
#include <vector>

// The file of a program of that name.
std::string program_file(std::string const& name);

// Lets another program do the rest: `words` begins with its file, or with its name where the
// system finds it. Comes back only with a failure, or with the other's exit status as this
// program's own.
struct Handover {
    bool started;
    int status;
};
Handover hand_over(std::vector<std::string> words);
