#pragma once

#include <optional>
#include <string>

// `text` as zlib packs it best; nothing on failure.
std::optional<std::string> deflated(std::string const& text);
