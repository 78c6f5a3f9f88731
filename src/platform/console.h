#pragma once

#include <string>
#include <vector>

// Connects standard output and standard error with the console that the program was started from,
// where a program with windows has none by itself, and has them understood as UTF-8. To be called
// first.
void join_console();

// What stands behind the program's name on its command line, as UTF-8; takes what main was given.
std::vector<std::string> words_of_call(int argc, char** argv);
