#include "records/mem_buffer.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

MemBuffer& buffer_of(SDL_RWops* stream) {
    return *static_cast<MemBuffer*>(stream->hidden.unknown.data1);
}

} // namespace

SDL_RWops* open_mem_buffer(MemBuffer& buffer) {
    SDL_RWops* stream = SDL_AllocRW();
    if (stream == nullptr) return nullptr;
    stream->type = SDL_RWOPS_UNKNOWN;
    stream->size = mem_size;
    stream->seek = mem_seek;
    stream->read = mem_read;
    stream->write = mem_write;
    stream->close = mem_close;
    stream->hidden.unknown.data1 = &buffer;
    return stream;
}

Sint64 SDLCALL mem_size(SDL_RWops* stream) {
    return static_cast<Sint64>(buffer_of(stream).bytes.size());
}

Sint64 SDLCALL mem_seek(SDL_RWops* stream, Sint64 offset, int whence) {
    MemBuffer& buffer = buffer_of(stream);
    Sint64 from = 0;
    if (whence == RW_SEEK_CUR) from = static_cast<Sint64>(buffer.pos);
    if (whence == RW_SEEK_END) from = mem_size(stream);
    if (offset > std::numeric_limits<Sint64>::max() - from || from + offset < 0) return -1;
    buffer.pos = static_cast<std::uint64_t>(from + offset);
    return from + offset;
}

std::size_t SDLCALL mem_read(SDL_RWops* stream, void* ptr, std::size_t size, std::size_t count) {
    MemBuffer& buffer = buffer_of(stream);
    if (size == 0) return 0;
    std::size_t const held = buffer.bytes.size();
    auto const at = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.pos, held));
    std::size_t const items = std::min(count, (held - at) / size);
    if (items > 0) std::memcpy(ptr, &buffer.bytes[at], items * size);
    buffer.pos += items * size;
    return items;
}

std::size_t SDLCALL mem_write(SDL_RWops* stream, void const* ptr, std::size_t size,
                              std::size_t count) {
    MemBuffer& buffer = buffer_of(stream);
    std::size_t const length = size * count;
    if (length == 0) return count;
    auto const at = static_cast<std::size_t>(buffer.pos);
    if (at != buffer.pos) return 0; // farther than this platform's memory reaches
    if (at + length > buffer.bytes.size()) buffer.bytes.resize(at + length);
    std::memcpy(&buffer.bytes[at], ptr, length);
    buffer.pos += length;
    return count;
}

int SDLCALL mem_close(SDL_RWops* /*stream*/) {
    return 0;
}
