// What a race frame costs beside the least that any frame must do on the same renderer: clear the
// screen, copy two pictures, present. Every figure is given as a ratio to that floor: by the wall
// clock, and by the processor time of all threads, which a busy machine disturbs less. Runs on
// the accelerated renderer where SDL finds one, else on the software renderer; BENCH_RENDERER names
// another ("software").

#include "race/ghost_gap.h"
#include "race/headless_race.h"
#include "render/hud.h"
#include "render/notices.h"
#include "render/overlays.h"
#include "render/text.h"
#include "render/track_view.h"
#include "render/view_settings.h"

#include <SDL_ttf.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace {

constexpr int WIDTH = 1280; // logical pixels
constexpr int HEIGHT = 720;
constexpr int TRACK_WIDTH = 2800; // cells: a large course, one pixel each
constexpr int TRACK_HEIGHT = 1900;
constexpr std::size_t FULL_QUEUE = 4096;

constexpr int GAPS_A_ROUND = 50; // one alone is too short to be timed

enum class Headings { Steady, Spinning };

// One window, two cars in split view, everything that a race frame draws.
class Race {
public:
    Race() {
        SDL_Init(SDL_INIT_VIDEO);
        TTF_Init();
        char const* wanted = std::getenv("BENCH_RENDERER");
        if (wanted != nullptr) SDL_SetHint(SDL_HINT_RENDER_DRIVER, wanted);
        window_ = SDL_CreateWindow("bench", 0, 0, WIDTH, HEIGHT, SDL_WINDOW_SHOWN);
        renderer = SDL_CreateRenderer(window_, -1, SDL_RENDERER_TARGETTEXTURE);
        if (renderer == nullptr) {
            std::fprintf(stderr, "renderer: %s\n", SDL_GetError());
            std::exit(EXIT_FAILURE);
        }
        SDL_RenderSetLogicalSize(renderer, WIDTH, HEIGHT);
        SDL_RendererInfo info{};
        SDL_GetRendererInfo(renderer, &info);
        std::printf("renderer: %s\n", info.name);
        open_fonts();
        make_track();
        place(red, {0, 0, WIDTH / 2, HEIGHT}, 1400, {220, 40, 40, 255});
        place(blue, {WIDTH / 2, 0, WIDTH / 2, HEIGHT}, 1450, {40, 80, 220, 255});
    }

    void fill_queues(std::size_t points, Headings headings) {
        for (Player* player : {&red, &blue}) {
            player->view.skid_points.clear();
            for (std::size_t i = 0; i < points; ++i) {
                double const along = 0.15 * static_cast<double>(i);
                double const turn = headings == Headings::Spinning ? 0.01 : 0.0;
                // Back and forth across the view, so that all of it shows.
                double const x = player->car.x - 150 + std::fmod(along, 300.0);
                player->view.skid_points.push_back(
                    {x, player->car.y + along / 10, turn * static_cast<double>(i), SDL_GetTicks()});
            }
        }
    }

    void draw_views() {
        draw_view(red, blue);
        draw_view(blue, red);
    }
    void draw_huds() {
        for (Player const* player : {&red, &blue}) {
            render_hud(renderer, player->view.viewport, player->view, player->car, 5, 23450, 67890,
                       fonts, true);
        }
    }
    void frame() {
        clear();
        draw_views();
        draw_huds();
        render_divider(renderer, WIDTH, HEIGHT);
        SDL_RenderPresent(renderer);
    }
    void floor_frame() {
        clear();
        for (Player const* player : {&red, &blue}) {
            SDL_Rect const source = {300, 300, WIDTH / 2, HEIGHT};
            SDL_RenderCopy(renderer, track_texture_.get(), &source, &player->view.viewport);
        }
        SDL_RenderPresent(renderer);
    }
    // Waits until the renderer has really drawn.
    void finish() {
        std::uint32_t pixel = 0;
        SDL_Rect const one = {0, 0, 1, 1};
        SDL_RenderReadPixels(renderer, &one, SDL_PIXELFORMAT_ARGB8888, &pixel, 4);
    }

    SDL_Renderer* renderer = nullptr;
    Fonts fonts;
    Player red;
    Player blue;

private:
    void open_fonts() {
        auto const open = [](int size) {
            return TTF_OpenFont("/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf", size);
        };
        fonts.hud_label = open(13);
        fonts.hud_small = open(14);
        fonts.hud_time = open(20);
        fonts.lap_time = open(90);
        fonts.winner = open(96);
    }
    void make_track() {
        PIXELS_PER_CELL = 1;
        track_.width = TRACK_WIDTH;
        track_.height = TRACK_HEIGHT;
        track_.cells.assign(static_cast<std::size_t>(TRACK_WIDTH) * TRACK_HEIGHT, 'g');
        for (std::size_t i = 0; i < track_.cells.size(); ++i) {
            if (i % 400 < 90) track_.cells[i] = '.';
        }
        track_texture_ = render_build_track_texture(renderer, track_, &tex_w_, &tex_h_);
    }
    void place(Player& player, SDL_Rect viewport, double x, SDL_Color body) {
        SurfaceHandle const art(
            SDL_CreateRGBSurfaceWithFormat(0, 60, 120, 32, SDL_PIXELFORMAT_ABGR8888));
        SDL_FillRect(art.get(), nullptr, 0xFF0000FFU);
        player.view.car_texture.reset(SDL_CreateTextureFromSurface(renderer, art.get()));
        player.view.viewport = viewport;
        player.view.body_color = body;
        player.view.best_lap_ms = 22220;
        player.view.laps_done = 2;
        player.view.cam_ready = true;
        player.view.cam_x = player.car.x = x;
        player.view.cam_y = player.car.y = 900;
        player.car.speed = 0.2;
    }
    void clear() {
        SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
        SDL_RenderClear(renderer);
    }
    void draw_view(Player const& own, Player const& other) {
        CarState ghost = own.car;
        ghost.x += 30;
        render_viewport(renderer, track_texture_.get(), tex_w_, tex_h_, track_, own.view, own.car,
                        other.view, other.car, &ghost);
    }

    SDL_Window* window_ = nullptr;
    Track track_;
    TextureHandle track_texture_;
    int tex_w_ = 0;
    int tex_h_ = 0;
};

Race& race() {
    static Race* const the_race = new Race; // SDL is left to the end of the process
    return *the_race;
}

struct Cost {
    double wall; // seconds
    double cpu;
};

template <typename Frame>
Cost cost_of(Frame&& frame) {
    auto const start = std::chrono::steady_clock::now();
    std::clock_t const cpu_start = std::clock();
    frame();
    race().finish();
    double const cpu = static_cast<double>(std::clock() - cpu_start) / CLOCKS_PER_SEC;
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), cpu};
}

double median(std::vector<Cost> const& costs, double Cost::*field) {
    std::vector<double> values;
    values.reserve(costs.size());
    for (Cost const& cost : costs) values.push_back(cost.*field);
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Times `frame` in turns with the floor, so that both see the same machine.
template <typename Frame>
void against_floor(benchmark::State& state, Frame&& frame) {
    std::vector<Cost> ours;
    std::vector<Cost> floors;
    for (auto _ : state) {
        floors.push_back(cost_of([] { race().floor_frame(); }));
        ours.push_back(cost_of(frame));
        state.SetIterationTime(ours.back().wall);
    }
    double const floor_cpu = median(floors, &Cost::cpu);
    state.counters["floor_cpu_us"] = floor_cpu * 1e6;
    state.counters["cpu_us"] = median(ours, &Cost::cpu) * 1e6;
    state.counters["cpu_ratio"] = median(ours, &Cost::cpu) / floor_cpu;
    state.counters["ratio"] = median(ours, &Cost::wall) / median(floors, &Cost::wall);
}

void frame_without_skids(benchmark::State& state) {
    race().fill_queues(0, Headings::Steady);
    against_floor(state, [] { race().frame(); });
}
BENCHMARK(frame_without_skids)->UseManualTime();

void frame_with_full_skids(benchmark::State& state) {
    race().fill_queues(FULL_QUEUE, Headings::Steady);
    against_floor(state, [] { race().frame(); });
}
BENCHMARK(frame_with_full_skids)->UseManualTime();

void frame_with_full_skids_spinning(benchmark::State& state) {
    race().fill_queues(FULL_QUEUE, Headings::Spinning);
    against_floor(state, [] { race().frame(); });
}
BENCHMARK(frame_with_full_skids_spinning)->UseManualTime();

void views_only(benchmark::State& state) {
    race().fill_queues(0, Headings::Steady);
    against_floor(state, [] {
        race().draw_views();
        SDL_RenderPresent(race().renderer);
    });
}
BENCHMARK(views_only)->UseManualTime();

void numbers_only(benchmark::State& state) {
    against_floor(state, [] { race().draw_huds(); });
}
BENCHMARK(numbers_only)->UseManualTime();

void winner_words_only(benchmark::State& state) {
    against_floor(state, [] {
        render_winner_overlay(race().renderer, race().red.view.viewport, race().fonts, 255);
    });
}
BENCHMARK(winner_words_only)->UseManualTime();

// The computer's best lap of the built-in course as the ghost, which a car follows.
class GhostChase {
public:
    GhostChase() {
        int const drawn_at = PIXELS_PER_CELL; // how far apart the cars start hangs on it
        PIXELS_PER_CELL = 8;
        headless_start(race_, make_default_track(), {.ai_blue = false, .laps = 2});
        headless_run(race_, 200.0);
        set_ghost(gap_, race_.track, lap(), race_.sim.p1.best_trace_substeps);
        PIXELS_PER_CELL = drawn_at;
    }
    void update() {
        at_ = (at_ + 16) % lap().size();
        if (at_ < 16) start_gap(gap_);
        update_gap(gap_, race_.track, lap()[at_], static_cast<double>(at_) + 730.0, SDL_GetTicks());
    }

private:
    [[nodiscard]] std::vector<CarState> const& lap() const { return race_.sim.p1.best_trace; }

    HeadlessRace race_;
    GhostGap gap_;
    std::size_t at_ = 0;
};

// What the gap to the ghost adds to a frame, in both views: "share" is the part of a frame's CPU
// time, all threads together.
void gap_to_the_ghost(benchmark::State& state) {
    GhostChase chase;
    race().fill_queues(200, Headings::Steady);
    std::vector<Cost> gaps;
    std::vector<Cost> frames;
    auto const gap = [&] {
        for (Player const* player : {&race().red, &race().blue}) {
            chase.update();
            render_ghost_gap(race().renderer, player->view.viewport, race().fonts, "+0.73", false);
        }
    };
    for (auto _ : state) {
        frames.push_back(cost_of([] { race().frame(); }));
        gaps.push_back(cost_of([&] {
            for (int i = 0; i < GAPS_A_ROUND; ++i) gap();
        }));
        state.SetIterationTime(gaps.back().wall / GAPS_A_ROUND);
    }
    double const gap_cpu = median(gaps, &Cost::cpu) / GAPS_A_ROUND;
    state.counters["cpu_us"] = gap_cpu * 1e6;
    state.counters["frame_cpu_us"] = median(frames, &Cost::cpu) * 1e6;
    state.counters["share"] = gap_cpu / median(frames, &Cost::cpu);
}
BENCHMARK(gap_to_the_ghost)->UseManualTime()->Iterations(200);

} // namespace
