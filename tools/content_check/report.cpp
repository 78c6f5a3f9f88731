#include "content_check/report.h"

#include <cstdio>

void Report::add(bool good, std::string const& thing, std::string const& found) {
    ++(good ? passed_ : failed_);
    std::printf("%-5s  %s: %s\n", good ? "ok" : "WRONG", thing.c_str(), found.c_str());
    std::fflush(stdout);
}
