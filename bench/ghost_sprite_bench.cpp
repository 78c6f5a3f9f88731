// The ghost's look is made twice at start-up from a car's art: how many plain passes over the
// picture it costs.

#include "records/ghost_sprite.h"
#include "render/image.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>

namespace {

constexpr int W = 512;
constexpr int H = 1024;

SurfaceHandle car_art() {
    SurfaceHandle art(SDL_CreateRGBSurfaceWithFormat(0, W, H, 32, PIXEL_FORMAT));
    SDL_Rect const car{40, 20, W - 80, H - 40};
    SDL_FillRect(art.get(), &car, SDL_MapRGBA(art->format, 200, 40, 30, 255));
    return art;
}

// The floor: the same number of pixels read, changed and written once.
void pass(SDL_Surface* surface) {
    for (int y = 0; y < surface->h; ++y) {
        std::uint32_t* const row = pixel_row(surface, y);
        for (int x = 0; x < surface->w; ++x) row[x] ^= row[x] >> 1U;
    }
    benchmark::ClobberMemory();
}

void ghost_transform_of_art(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    SurfaceHandle const art = car_art();
    SurfaceHandle const scratch = car_art();
    double work = 0.0;
    double floor = 0.0;
    for (auto _ : state) {
        auto const start = Clock::now();
        SurfaceHandle const ghost(ghost_transform(art.get(), 35, GHOST_OUTLINE_RED));
        benchmark::DoNotOptimize(ghost->pixels);
        auto const middle = Clock::now();
        pass(scratch.get());
        floor += std::chrono::duration<double>(Clock::now() - middle).count();
        work += std::chrono::duration<double>(middle - start).count();
    }
    auto const rounds = static_cast<double>(state.iterations());
    state.counters["passes"] = work / floor;
    state.counters["ms"] = work / rounds * 1e3;
}
BENCHMARK(ghost_transform_of_art)->Unit(benchmark::kMillisecond);

} // namespace
