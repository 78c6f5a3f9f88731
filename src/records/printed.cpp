#include "records/printed.h"

#include <cstdarg>
#include <cstdio>

std::string printed(char const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    // The analyzer loses sight of va_start when it looks into the callers.
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    int const length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(static_cast<std::size_t>(length > 0 ? length : 0), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    return text;
}
