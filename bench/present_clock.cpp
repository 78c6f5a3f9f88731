// Preloaded into the real program: notes when each frame was handed to the screen. Every call of
// SDL_RenderPresent appends three clocks in nanoseconds, as it returns, to the file
// that BRINDLE_PRESENT_LOG names: the monotonic one, and what the calling thread and the whole
// program have had of the processors, which a busy machine changes little.

#include <SDL.h>

#include <array>
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

std::int64_t now_ns(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

} // namespace

extern "C" __attribute__((visibility("default"))) void SDL_RenderPresent(SDL_Renderer* renderer) {
    using Present = void (*)(SDL_Renderer*);
    static auto const present = reinterpret_cast<Present>(dlsym(RTLD_NEXT, "SDL_RenderPresent"));
    static std::FILE* const log = open_log();
    present(renderer);
    if (log == nullptr) return;
    std::array const clocks{now_ns(CLOCK_MONOTONIC), now_ns(CLOCK_THREAD_CPUTIME_ID),
                            now_ns(CLOCK_PROCESS_CPUTIME_ID)};
    std::fwrite(clocks.data(), sizeof clocks, 1, log);
    std::fflush(log);
}
