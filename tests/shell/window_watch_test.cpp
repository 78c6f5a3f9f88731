#include "render/hud.h"
#include "shell/window_watch.h"
#include "support/canvas.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace {

// The bar of a race at the top of a window, as its pixels.
std::vector<std::uint32_t> bar(ScreenlessWindow const& window, Fonts const& fonts) {
    SDL_SetRenderDrawColor(window.renderer(), 60, 120, 60, 255);
    SDL_RenderClear(window.renderer());
    PlayerView view;
    view.best_lap_ms = 61'230;
    view.laps_done = 1;
    render_hud(window.renderer(), {0, 0, 640, 720}, view, {}, 3, 23'450, 84'680, fonts, true);
    return window.pixels();
}

} // namespace

TEST(WindowWatch, KeepsTheBarAsSharpAsInAWindowOfThatSize) {
    WorkingDir const folder;
    lay_fonts("truetype/dejavu/DejaVuSans-Bold.ttf", RACE_FONTS);
    for (SDL_Point const size : {SDL_Point{1920, 1080}, SDL_Point{1000, 600}}) {
        ScreenlessWindow resized({1280, 720});
        Fonts fonts;
        fonts.open_all(output_scale(resized.renderer()));
        WindowWatch const watch(resized.renderer(), fonts);
        resized.resize(size);
        ScreenlessWindow const fresh(size);
        Fonts fresh_fonts;
        fresh_fonts.open_all(output_scale(fresh.renderer()));
        EXPECT_TRUE(bar(resized, fonts) == bar(fresh, fresh_fonts)) << size.x << " x " << size.y;
        fonts.close();
        fresh_fonts.close();
    }
}
