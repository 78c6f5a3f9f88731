#pragma once

#include <string>

// printf into a string of whatever length it takes.
[[gnu::format(printf, 1, 2)]] std::string printed(char const* format, ...);
