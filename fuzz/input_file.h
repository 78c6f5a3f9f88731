#pragma once

// One try's bytes as the readers take them: in memory where they can, else as a file on disk; and
// the check that ends the run. A target's file says what may come of any bytes at all.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <streambuf>
#include <string_view>

// The bytes as text, and as a stream that reads them where they lie.
std::string_view as_text(std::uint8_t const* data, std::size_t size);

class InputStream : private std::streambuf, public std::istream {
public:
    InputStream(std::uint8_t const* data, std::size_t size);
};

// This process's own folder in the temporary folder; it goes with the process.
std::filesystem::path const& scratch_folder();

void write_bytes(std::filesystem::path const& path, std::uint8_t const* data, std::size_t size);

// Stops the run, which keeps the bytes that led here.
void require(bool holds);
