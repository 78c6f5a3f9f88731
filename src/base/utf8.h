#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Length in bytes of the code point at the beginning of `text`, which is not empty, and the code
// point itself, 0 for bytes that are none.
std::size_t first_code_point(std::string_view text, std::uint32_t& code);
