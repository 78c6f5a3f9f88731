// What a menu frame costs beside the least that such a frame can be: clear, gradient, present.
// And what a track's thumbnail costs with and without its cache, beside reading its bytes.

#include "audio/audio.h"
#include "screens/menu_render.h"
#include "screens/menu_screen.h"
#include "screens/track_thumb.h"

#include <SDL_image.h>
#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Of the size and kind of our own: palette pixels with the noise of grass and gravel.
void save_track_picture(char const* path) {
    SurfaceHandle const picture(
        SDL_CreateRGBSurfaceWithFormat(0, 4800, 3200, 8, SDL_PIXELFORMAT_INDEX8));
    std::array<SDL_Color, 256> colors{};
    for (std::size_t i = 0; i < colors.size(); ++i) {
        auto const shade = static_cast<std::uint8_t>(i);
        colors[i] = {shade, static_cast<std::uint8_t>(255 - i), 60, 255};
    }
    SDL_SetPaletteColors(picture->format->palette, colors.data(), 0, 256);
    std::uint32_t noise = 1;
    auto* pixels = static_cast<std::uint8_t*>(picture->pixels);
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{picture->h} * picture->pitch; ++i) {
        noise = noise * 1664525U + 1013904223U;
        pixels[i] = static_cast<std::uint8_t>(100 + (noise >> 30U)); // packs about as ours do
    }
    IMG_SavePNG(picture.get(), path);
}

// A window without vsync, and a working folder with one large track picture.
struct Stage {
    Stage() {
        SDL_Init(SDL_INIT_VIDEO);
        TTF_Init();
        fs::create_directories(folder / "tracks");
        fs::create_directories(folder / "art/fonts");
        fs::current_path(folder);
        for (char const* font :
             {"Quango-xlVR.otf", "StarJediOutline-y0xm.ttf", "Montserrat-SemiBoldItalic.otf"}) {
            fs::copy_file("/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf",
                          fs::path("art/fonts") / font, fs::copy_options::overwrite_existing);
        }
        std::ofstream("tracks/1_bench.trk") << "1 1\n*\n";
        save_track_picture("tracks/1_bench.png");
        window = SDL_CreateWindow("menu bench", 0, 0, 1280, 720, 0);
        renderer = SDL_CreateRenderer(window, -1, 0);
        SDL_RenderSetLogicalSize(renderer, 1280, 720);
    }
    ~Stage() {
        release_bg_gradient();
        SDL_DestroyRenderer(renderer);
        SDL_DestroyWindow(window);
        fs::current_path(fs::temp_directory_path());
        fs::remove_all(folder);
    }
    Stage(Stage const&) = delete;
    Stage& operator=(Stage const&) = delete;

    fs::path folder = fs::temp_directory_path() / "brindle-menu-bench";
    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
};

void floor_frame(SDL_Renderer* renderer) {
    SDL_SetRenderDrawColor(renderer, 6, 10, 32, 255);
    SDL_RenderClear(renderer);
    draw_bg_gradient(renderer, 1280, 720);
    SDL_RenderPresent(renderer);
}

// The menu as it stands after its intro, with title art and a chosen track.
void menu_frame(benchmark::State& state) {
    Stage const stage;
    Audio audio;
    bool fullscreen = false;
    MenuScreen menu;
    menu.window = stage.window;
    menu.renderer = stage.renderer;
    menu.audio = &audio;
    menu.fullscreen = &fullscreen;
    set_up_menu(menu, false);
    menu.header.reset(SDL_CreateTexture(stage.renderer, SDL_PIXELFORMAT_ABGR8888,
                                        SDL_TEXTUREACCESS_STATIC, 1536, 560));
    menu.header_w = 1536;
    menu.header_h = 560;
    menu.sparkle.points.push_back({700, 200});
    pick_row(menu.tracks, 0, 1);
    unsigned now = menu.sparkle.intro_at + 1500;
    double frame_s = 0.0;
    double floor_s = 0.0;
    for (auto _ : state) {
        auto const start = Clock::now();
        draw_menu_phase(menu, 0.0F, now);
        frame_s += seconds_since(start);
        auto const floor_start = Clock::now();
        floor_frame(stage.renderer);
        floor_s += seconds_since(floor_start);
        now += 16;
    }
    state.counters["ratio_to_floor"] = frame_s / floor_s;
}
BENCHMARK(menu_frame);

void read_bytes(char const* path) {
    std::ifstream file(path, std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(file), {}};
    benchmark::DoNotOptimize(bytes.data());
}

// `cold` takes the cache away before every load.
void thumbnail(benchmark::State& state, bool cold) {
    Stage const stage;
    TextureHandle texture;
    int w = 0;
    int h = 0;
    double load_s = 0.0;
    double floor_s = 0.0;
    char const* const read = cold ? "tracks/1_bench.png" : ".cache/thumbs/1_bench.png";
    load_track_thumb(stage.renderer, "tracks/1_bench.png", 130, 1.0, texture, &w, &h);
    for (auto _ : state) {
        auto const floor_start = Clock::now();
        read_bytes(read);
        floor_s += seconds_since(floor_start);
        if (cold) fs::remove_all(".cache");
        auto const start = Clock::now();
        load_track_thumb(stage.renderer, "tracks/1_bench.png", 130, 1.0, texture, &w, &h);
        load_s += seconds_since(start);
    }
    state.counters["ratio_to_reading"] = load_s / floor_s;
}
BENCHMARK_CAPTURE(thumbnail, cold, true);
BENCHMARK_CAPTURE(thumbnail, warm, false);

} // namespace
