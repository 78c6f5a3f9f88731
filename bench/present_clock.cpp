// Preloaded into the real program: notes when each frame was handed to the screen. Every call of
// SDL_RenderPresent appends the monotonic clock in nanoseconds, as it returns, to the file that
// BRINDLE_PRESENT_LOG names.

#include <SDL.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>

namespace {

std::FILE* open_log() {
    char const* path = std::getenv("BRINDLE_PRESENT_LOG");
    return path != nullptr ? std::fopen(path, "wb") : nullptr;
}

} // namespace

extern "C" __attribute__((visibility("default"))) void SDL_RenderPresent(SDL_Renderer* renderer) {
    using Present = void (*)(SDL_Renderer*);
    static auto const present = reinterpret_cast<Present>(dlsym(RTLD_NEXT, "SDL_RenderPresent"));
    static std::FILE* const log = open_log();
    present(renderer);
    if (log == nullptr) return;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    std::int64_t const ns = std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
    std::fwrite(&ns, sizeof ns, 1, log);
    std::fflush(log);
}
