#pragma once

// A small file as text in memory.

#include <optional>
#include <string>

// What a file holds; nothing if it cannot be opened. `broken_off`, unless null, receives whether
// the disk failed before the end, or the file is beyond any use: more than 64 MiB.
std::optional<std::string> read_file_text(std::string const& path, bool* broken_off = nullptr);

// The lines that were surely written to their end, of a text that a power cut may have torn: up to
// the first zero byte and then to the last line feed.
std::string surely_written(std::string const& text);
