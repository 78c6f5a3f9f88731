#pragma once

// Counts allocations with operator new. A test program that calls this gets the counting operator
// with it.

#include <cstdint>

// How many times operator new has run in this process.
std::uint64_t allocation_count();
