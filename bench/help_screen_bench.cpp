// A frame of the help screen against the least that such a frame can be: clear, the lines of the
// gradient, one copy of the page, present.

#include "base/sdl_handles.h"
#include "screens/help_screen.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>

namespace {

constexpr int W = 1280;
constexpr int H = 720;

struct Screen {
    SurfaceHandle surface{SDL_CreateRGBSurfaceWithFormat(0, W, H, 32, SDL_PIXELFORMAT_ABGR8888)};
    SDL_Renderer* renderer = SDL_CreateSoftwareRenderer(surface.get());
};

void draw_floor(SDL_Renderer* renderer, SDL_Texture* page) {
    SDL_SetRenderDrawColor(renderer, 6, 10, 32, 255);
    SDL_RenderClear(renderer);
    for (int y = 0; y < H; ++y) {
        SDL_SetRenderDrawColor(renderer, 6, 10, static_cast<std::uint8_t>(32 + y * 64 / H), 255);
        SDL_RenderDrawLine(renderer, 0, y, W - 1, y);
    }
    SDL_RenderCopy(renderer, page, nullptr, nullptr);
    SDL_RenderPresent(renderer);
}

void help_frame(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    Screen const screen;
    KeyboardTex page;
    auto const opened = Clock::now();
    render_help_screen(screen.renderer, W, H, page, 1.0F);
    double const first = std::chrono::duration<double>(Clock::now() - opened).count();
    double work = 0.0;
    double floor = 0.0;
    for (auto _ : state) {
        auto const start = Clock::now();
        render_help_screen(screen.renderer, W, H, page, 1.0F);
        auto const middle = Clock::now();
        draw_floor(screen.renderer, page.tex.get());
        floor += std::chrono::duration<double>(Clock::now() - middle).count();
        work += std::chrono::duration<double>(middle - start).count();
    }
    auto const rounds = static_cast<double>(state.iterations());
    state.counters["over_floor"] = work / floor;
    state.counters["frame_ms"] = work / rounds * 1e3;
    state.counters["first_frame_ms"] = first * 1e3; // lays the page out
}
BENCHMARK(help_frame)->Unit(benchmark::kMillisecond);

} // namespace
