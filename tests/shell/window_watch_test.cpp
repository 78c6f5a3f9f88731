#include "render/hud.h"
#include "shell/window_watch.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

using Pixels = std::vector<std::uint32_t>;

// A window of the driver without a screen, with the bar of a race at the top of it.
struct BarWindow {
    explicit BarWindow(SDL_Point size) {
        SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        SDL_InitSubSystem(SDL_INIT_VIDEO);
        window = SDL_CreateWindow("", 0, 0, size.x, size.y, SDL_WINDOW_RESIZABLE);
        renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
        SDL_RenderSetLogicalSize(renderer, 1280, 720);
        fonts.open_all(output_scale(renderer));
    }
    ~BarWindow() {
        fonts.close();
        SDL_DestroyRenderer(renderer);
        SDL_DestroyWindow(window);
    }
    BarWindow(BarWindow const&) = delete;
    BarWindow& operator=(BarWindow const&) = delete;

    [[nodiscard]] Pixels pixels() const {
        SDL_SetRenderDrawColor(renderer, 60, 120, 60, 255);
        SDL_RenderClear(renderer);
        PlayerView view;
        view.best_lap_ms = 61'230;
        view.laps_done = 1;
        render_hud(renderer, {0, 0, 640, 720}, view, {}, 3, 23'450, 84'680, fonts, true);
        int w = 0;
        int h = 0;
        SDL_GetRendererOutputSize(renderer, &w, &h);
        Pixels read(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
        SDL_RenderSetLogicalSize(renderer, 0, 0);
        SDL_RenderReadPixels(renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, read.data(), w * 4);
        SDL_RenderSetLogicalSize(renderer, 1280, 720);
        return read;
    }

    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
    Fonts fonts;
};

} // namespace

TEST(WindowWatch, KeepsTheBarAsSharpAsInAWindowOfThatSize) {
    TempDir const folder;
    WorkingDir const there(folder.path());
    TTF_Init();
    fs::create_directories("art/fonts");
    for (char const* name :
         {"Montserrat-Black.otf", "LiberationMono-Bold.ttf", "RocketBrush-DYwyW.otf"}) {
        fs::create_symlink("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf",
                           fs::path("art/fonts") / name);
    }
    for (SDL_Point const size : {SDL_Point{1920, 1080}, SDL_Point{1000, 600}}) {
        BarWindow resized({1280, 720});
        WindowWatch const watch(resized.renderer, resized.fonts);
        SDL_SetWindowSize(resized.window, size.x, size.y);
        SDL_PumpEvents();
        EXPECT_TRUE(resized.pixels() == BarWindow(size).pixels()) << size.x << " x " << size.y;
    }
}
