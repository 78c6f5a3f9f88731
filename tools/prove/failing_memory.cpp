// Memory, where it is the C library's own.

#include "prove/failing_calls.h"

#include <cerrno>
#include <cstdlib>

extern "C" {

void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

void* malloc(std::size_t size) {
    return fails(Kind::malloc) ? (errno = ENOMEM, nullptr) : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    return fails(Kind::malloc) ? (errno = ENOMEM, nullptr) : __libc_calloc(count, size);
}
void* realloc(void* old, std::size_t size) {
    return fails(Kind::malloc) ? (errno = ENOMEM, nullptr) : __libc_realloc(old, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return fails(Kind::malloc) ? (errno = ENOMEM, nullptr) : __libc_memalign(alignment, size);
}
}
