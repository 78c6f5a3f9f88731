#pragma once

// A stream of SDL's over a growing block of memory, for encoders that can only write to streams.

#include <SDL.h>

#include <cstdint>
#include <vector>

struct MemBuffer {
    std::vector<std::uint8_t> bytes;
    std::uint64_t pos = 0; // may lie behind the end; a write there fills the gap with zeros
};

// A stream onto `buffer`, which must outlive it; null on failure. It goes with SDL_FreeRW, the
// bytes stay.
SDL_RWops* open_mem_buffer(MemBuffer& buffer);

Sint64 SDLCALL mem_size(SDL_RWops* stream);
Sint64 SDLCALL mem_seek(SDL_RWops* stream, Sint64 offset, int whence);
std::size_t SDLCALL mem_read(SDL_RWops* stream, void* ptr, std::size_t size, std::size_t count);
std::size_t SDLCALL mem_write(SDL_RWops* stream, void const* ptr, std::size_t size,
                              std::size_t count);
int SDLCALL mem_close(SDL_RWops* stream);
