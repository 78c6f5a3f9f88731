#include "shell/out_of_memory.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t LARGE_BLOCK = std::size_t{1} << 20U;

[[noreturn]] void give_up() {
    std::fputs("Brindle Run is out of memory\n", stderr);
    std::_Exit(EXIT_FAILURE);
}

// SDL itself does not survive the loss of every small block: its queue of drawing commands, for
// one, is written to unseen.
void* or_give_up(void* block, std::size_t size) {
    if (block == nullptr && size < LARGE_BLOCK) give_up();
    return block;
}

void* allocate(std::size_t size) {
    return or_give_up(std::malloc(size), size); // NOLINT: SDL's way of memory
}

void* allocate_cleared(std::size_t count, std::size_t size) {
    return or_give_up(std::calloc(count, size), count * size); // NOLINT
}

void* reallocate(void* block, std::size_t size) {
    return or_give_up(std::realloc(block, size), size); // NOLINT
}

} // namespace

void end_when_out_of_memory() {
    std::set_new_handler(give_up);
    SDL_SetMemoryFunctions(allocate, allocate_cleared, reallocate, std::free);
}
