// The world by itself: a tick against the bare library calls in it, the computer driver, a bump,
// the track's derived fields and its file. "x_floor" tells how many times the floor of the same
// run a thing takes.

#include "audio/audio.h"
#include "race/headless_race.h"
#include "race/race_tick.h"
#include "world/ai_driver.h"
#include "world/arcade_bump.h"
#include "world/car_physics.h"
#include "world/track_file.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numbers>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

// Nanoseconds per call of `work` in one round.
template <typename Work>
double nanoseconds_per_call(int calls, Work& work) {
    auto const start = Clock::now();
    for (int i = 0; i < calls; ++i) work();
    std::chrono::duration<double, std::nano> const spent = Clock::now() - start;
    return spent.count() / calls;
}

// Times `floor` and `mine` in turns, so that both see the same machine, and reports the best round
// of each. A round is shorter than a slice of a busy machine's time, so that some run undisturbed.
template <typename Floor, typename Mine>
void against_floor(benchmark::State& state, int rounds, int calls, Floor floor, Mine mine) {
    double floor_ns = 1e18;
    double mine_ns = 1e18;
    for (auto _ : state) {
        for (int round = 0; round < rounds; ++round) {
            floor_ns = std::min(floor_ns, nanoseconds_per_call(calls, floor));
            mine_ns = std::min(mine_ns, nanoseconds_per_call(calls, mine));
        }
    }
    state.counters["floor_ns"] = floor_ns;
    state.counters["mine_ns"] = mine_ns;
    state.counters["x_floor"] = mine_ns / floor_ns;
}

// What no tick of a skidding car can do without: two directions, two angles, one length.
double bare_calls(double a, double b) {
    double const x = std::cos(a) + 0.3 * std::cos(b);
    double const y = std::sin(a) + 0.3 * std::sin(b);
    return std::atan2(y, x) + std::atan2(x, y) + std::hypot(x, y);
}

constexpr int TICK_ROUNDS = 1000;
constexpr int TICKS_A_ROUND = 1000;

// The bare calls, each time with other angles.
auto floor_of_a_tick() {
    return [angle = 0.1]() mutable {
        benchmark::DoNotOptimize(bare_calls(angle, -angle));
        angle = angle > 3.0 ? -3.0 : angle + 0.001;
    };
}

// A course with room for full speed: a ring of road, `width` x `height` cells.
Track make_ring(int width, int height) {
    Track track;
    track.width = width;
    track.height = height;
    track.cells.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 'g');
    double const half = 0.5 * height;
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            double const off =
                std::max(std::abs(column + 0.5 - 0.5 * width) - (0.5 * width - half), 0.0);
            double const d = std::hypot(off, row + 0.5 - half);
            std::uint8_t& cell = track.cells[track.index(column, row)];
            if (d < half - 20.0 && d > half - 120.0) {
                cell = '.';
            } else if (d < half - 17.0 && d > half - 123.0) {
                cell = (column + row) % 12 < 6 ? 'r' : 'w';
            }
        }
    }
    int const middle = width / 2;
    for (int row = 10; row < 130; ++row) track.cells[track.index(middle, row)] = '!';
    track.goal_x1 = track.goal_x2 = middle;
    track.goal_y1 = 10;
    track.goal_y2 = 129;
    track.start_x = middle - 10;
    track.start_y = 70;
    track.start_angle = std::numbers::pi;
    track.cells[track.index(track.start_x, track.start_y)] = '*';
    track.compute_grass_distance();
    track.compute_start_distance();
    return track;
}

void use_scale(int pixels) {
    PIXELS_PER_CELL = pixels;
}

// The physics alone, against its floor. Argument 0: grip, 1: skid.
void physics_step(benchmark::State& state) {
    bool const skid = state.range(0) != 0;
    CarState car;
    car.throttle = 0.3;
    against_floor(state, TICK_ROUNDS, TICKS_A_ROUND, floor_of_a_tick(), [&] {
        if (skid) {
            car.skidding = true;
            car.throttle = 0.3;
        }
        physics_step_cartest(car, {.gas = true, .right = true}, {});
        benchmark::DoNotOptimize(car);
    });
}
BENCHMARK(physics_step)->Arg(0)->Arg(1)->Iterations(1)->ArgName("skid");

// A whole tick of a driving car with surface, walls, goal line and recording. It drives
// the same 200 ticks again and again. Argument 0: as it does by itself, 1: skidding all the time.
void tick(benchmark::State& state) {
    use_scale(1);
    bool const skid = state.range(0) != 0;
    HeadlessRace race;
    headless_start(race, make_ring(1200, 800), {});
    headless_run(race, 20.0);
    RaceContext context{race.sim, race.track, race.events, 1, false, 10};
    Player& player = race.sim.p1;
    CarState const driving = player.car;
    int i = 0;
    against_floor(state, TICK_ROUNDS, TICKS_A_ROUND, floor_of_a_tick(), [&] {
        if (++i % 200 == 0) player.car = driving;
        if (skid) player.car.skidding = true;
        if (player.trace.size() == 30000) player.trace.clear(); // the next lap
        race_tick(context, player, i % 10);
    });
}
BENCHMARK(tick)->Arg(0)->Arg(1)->Iterations(1)->ArgName("skid");

void driver(benchmark::State& state) {
    HeadlessRace race;
    headless_start(race, make_ring(2800, 1900), {});
    headless_run(race, 5.0);
    for (auto _ : state) benchmark::DoNotOptimize(ai_drive(race.sim.p1, race.sim.p2, race.track));
}
BENCHMARK(driver)->Unit(benchmark::kMicrosecond);

// Argument 0: cars far apart, 1: near but not touching, 2: bumping.
void bump(benchmark::State& state) {
    use_scale(1);
    Track const track = make_ring(1200, 800);
    Audio audio;
    CarState a;
    a.x = 600.0;
    a.y = 70.0;
    a.speed = 0.3;
    CarState b = a;
    b.x += state.range(0) == 0 ? 200.0 : state.range(0) == 1 ? 28.0 : 20.0;
    b.speed = 0.0;
    for (auto _ : state) {
        CarState first = a;
        CarState second = b;
        benchmark::DoNotOptimize(arcade_car_bump(first, second, 2, 2, track, audio));
    }
}
BENCHMARK(bump)->DenseRange(0, 2)->ArgName("meeting");

void derived_fields(benchmark::State& state) {
    Track track = make_ring(3000, 2000);
    if (state.range(0) != 0) {
        std::replace(track.cells.begin(), track.cells.end(), std::uint8_t{'g'}, std::uint8_t{'.'});
    }
    for (auto _ : state) {
        track.compute_grass_distance();
        track.compute_start_distance();
    }
}
BENCHMARK(derived_fields)->Arg(0)->Arg(1)->ArgName("all_road")->Unit(benchmark::kMillisecond);

// Against reading the file's bytes.
void load_large_track(benchmark::State& state) {
    auto const path = std::filesystem::temp_directory_path() /
                      ("brindle-bench-" + std::to_string(getpid()) + ".trk");
    Track track = make_ring(3000, 2000);
    {
        std::ofstream file(path, std::ios::binary);
        file << track.width << ' ' << track.height << '\n';
        for (int row = 0; row < track.height; ++row) {
            file.write(reinterpret_cast<char const*>(&track.cells[track.index(0, row)]),
                       track.width);
            file << '\n';
        }
    }
    auto const read_bytes = [&] {
        std::ifstream file(path, std::ios::binary);
        std::vector<char> bytes(std::filesystem::file_size(path));
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        benchmark::DoNotOptimize(bytes.data());
    };
    against_floor(state, 5, 1, read_bytes,
                  [&] { benchmark::DoNotOptimize(load_track(path, track)); });
    std::filesystem::remove(path);
}
BENCHMARK(load_large_track)->Iterations(1);

// Two computer drivers on a large course: simulated seconds per second of one core.
void headless(benchmark::State& state) {
    use_scale(1);
    std::FILE* const console = stdout;
    HeadlessRace race;
    headless_start(race, make_ring(2800, 1900), {.arcade = state.range(0) != 0});
    stdout = std::fopen("/dev/null", "w"); // the laps are told on standard output
    double simulated = 0.0;
    auto const start = Clock::now();
    for (auto _ : state) {
        headless_run(race, 10.0);
        simulated += 10.0;
    }
    std::chrono::duration<double> const spent = Clock::now() - start;
    std::fclose(stdout);
    stdout = console;
    state.counters["times_real"] = simulated / spent.count();
}
BENCHMARK(headless)->Arg(0)->Arg(1)->ArgName("arcade")->Unit(benchmark::kMillisecond);

} // namespace
