#pragma once

// printf to the standard output, flushed at once, so that a run can be followed line by line.
[[gnu::format(printf, 1, 2)]] void say(char const* format, ...);
