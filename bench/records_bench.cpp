// What records cost: the save of a lap in the middle of a race, against writing the same bytes in
// place, and the report, against decoding its pictures.

#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/highscore_report.h"
#include "render/image.h"

#include <SDL_image.h>
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t LAP_FRAMES = 60'000; // 60 s

// A folder beside the user's own, on the same disk, that goes with the program; records and the
// working directory move there.
class Workplace {
public:
    Workplace() {
        char const* home = std::getenv("HOME");
        folder_ = fs::path(home != nullptr ? home : ".") / ".brindle-records-bench";
        fs::create_directories(folder_ / "tracks");
        setenv("XDG_DATA_HOME", folder_.c_str(), 1);
        fs::current_path(folder_);
    }
    ~Workplace() {
        std::error_code ignored;
        fs::current_path("/", ignored);
        fs::remove_all(folder_, ignored);
    }
    Workplace(Workplace const&) = delete;
    Workplace& operator=(Workplace const&) = delete;

private:
    fs::path folder_;
};

// One for the whole program, as the preference folder is asked for only once.
void enter_workplace() {
    static Workplace const workplace;
}

double milliseconds(auto const& work) {
    auto const start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

std::vector<CarState> make_lap() {
    std::vector<CarState> lap(LAP_FRAMES);
    for (std::size_t i = 0; i < lap.size(); ++i) {
        double const turn = static_cast<double>(i) / LAP_FRAMES * 2.0 * std::numbers::pi;
        lap[i].x = 1400.0 + 1200.0 * std::cos(turn) + 100.0 * std::cos(9.0 * turn);
        lap[i].y = 950.0 + 800.0 * std::sin(turn) + 100.0 * std::sin(11.0 * turn);
    }
    return lap;
}

void write_in_place(std::vector<CarState> const& lap) {
    std::FILE* file = std::fopen("floor.trace", "wb");
    std::fwrite(lap.data(), sizeof(CarState), lap.size(), file);
    std::fclose(file);
}

// Laps lie many seconds apart: a pause lets the disk come to rest as it does in a race.
void save_of_a_lap(benchmark::State& state) {
    enter_workplace();
    std::vector<CarState> const lap = make_lap();
    double seconds = 1e6;
    double longest = 0.0;
    double floor = 0.0;
    double total = 0.0;
    for (auto _ : state) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        std::error_code ignored;
        fs::remove("floor.trace", ignored);
        floor += milliseconds([&] { write_in_place(lap); });
        double const save = milliseconds([&] {
            record_best_lap("Ann", 1, seconds, "Ann.coast.trace");
            save_ghost_trace(pref_path("Ann.coast.trace"), lap, 10);
        });
        seconds -= 1.0;
        longest = std::max(longest, save);
        total += save;
        state.SetIterationTime(save / 1000.0);
    }
    state.counters["longest_ms"] = longest;
    state.counters["x_floor"] = total / floor;
}
BENCHMARK(save_of_a_lap)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);

void lay_down_track(int slot, std::vector<CarState> const& lap) {
    std::string const name = "tracks/" + std::to_string(slot) + "_course";
    std::ofstream(name + ".trk") << "2800 1900\n";
    SurfaceHandle const picture(SDL_CreateRGBSurfaceWithFormat(0, 2800, 1900, 32, PIXEL_FORMAT));
    for (int y = 0; y < picture->h; ++y) {
        std::uint32_t* row = pixel_row(picture.get(), y);
        for (int x = 0; x < picture->w; ++x) {
            row[x] = 0xff000000U | static_cast<std::uint32_t>(x / 16 * 7 + y / 16 * 1313);
        }
    }
    IMG_SavePNG(picture.get(), (name + ".png").c_str());
    std::string const ghost = "ann." + std::to_string(slot);
    save_ghost_trace(pref_path(ghost.c_str()), lap, 10);
    record_best_lap("Ann", slot, 60.0, ghost);
}

void report_of_nine_tracks(benchmark::State& state) {
    enter_workplace();
    std::vector<CarState> const lap = make_lap();
    for (int slot = 1; slot <= 9; ++slot) lay_down_track(slot, lap);
    double decoding = 0.0;
    double total = 0.0;
    for (auto _ : state) {
        for (int slot = 1; slot <= 9; ++slot) {
            std::string const picture = "tracks/" + std::to_string(slot) + "_course.png";
            decoding += milliseconds([&] { load_picture(picture.c_str()); });
        }
        double const report = milliseconds([] { write_highscore_pdf("Ann", "report.pdf"); });
        total += report;
        state.SetIterationTime(report / 1000.0);
    }
    state.counters["x_decoding"] = total / decoding;
}
BENCHMARK(report_of_nine_tracks)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
