#include "base/say.h"

#include <cstdarg>
#include <cstdio>

void say(char const* format, ...) {
    va_list args;
    va_start(args, format);
    std::vprintf(format, args);
    va_end(args);
    std::fflush(stdout);
}
