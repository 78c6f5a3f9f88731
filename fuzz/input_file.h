#pragma once

// One try's bytes as a file on disk, since that is how the game meets them, and the check that ends
// the run. A target's file says what may come of any bytes at all.

#include <cstddef>
#include <cstdint>
#include <filesystem>

// This process's own folder in the temporary folder; it goes with the process.
std::filesystem::path const& scratch_folder();

void write_bytes(std::filesystem::path const& path, std::uint8_t const* data, std::size_t size);

// Stops the run, which keeps the bytes that led here.
void require(bool holds);
