#pragma once

#include <string>

// Between UTF-8 and what the system calls take. What makes no sense becomes U+FFFD.
std::wstring to_wide(std::string const& text);
std::string to_utf8(std::wstring const& text);
