#include "audio/audio.h"
#include "screens/menu_screen.h"
#include "support/canvas.h"
#include "support/files.h"
#include "support/keys.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

namespace {

// A real menu in a window.
struct ResizedMenu : testing::Test {
    ResizedMenu() {
        std::filesystem::create_directory("tracks");
        lay_fonts("truetype/liberation/LiberationSans-Bold.ttf",
                  std::array{"Quango-xlVR.otf", "StarJediOutline-y0xm.ttf",
                             "Montserrat-SemiBoldItalic.otf"});
        picture("art/menu_header_alpha.png", 600, 200, {0, 0, 0, 0});
        picture("art/start_racing4.png", 1060, 180, {200, 40, 40, 255});
        picture("art/mouse2b.png", 240, 300, {250, 250, 250, 255});
        write_file("tracks/1_one.trk", "");
        picture("tracks/1_one.png", 1200, 900, {10, 200, 90, 255});
        write_file("tracks/7_seven.trk", "");
        picture("tracks/7_seven.png", 900, 900, {200, 100, 90, 255});
    }

    static void picture(char const* path, int w, int h, SDL_Color color) {
        IMG_SavePNG(make_surface(w, h, color).get(), path);
    }

    void open_menu(MenuScreen& menu, ScreenlessWindow const& window, ScreenPhase phase) {
        menu.window = window.window();
        menu.renderer = window.renderer();
        menu.audio = &audio_;
        menu.fullscreen = &fullscreen_;
        set_up_menu(menu, false);
        menu.names.fields[0].text = "Zoe";
        for (SDL_Scancode const key : {SDL_SCANCODE_7, SDL_SCANCODE_R, SDL_SCANCODE_F1}) {
            handle_menu_event(menu, key_event(key), 1000);
        }
        menu.sparkle.intro_at = 1000;
        menu.start.shown_at = 1000;
        menu.cursor.visible = true;
        menu.cursor.moved_at = 4000;
        menu.screen_phase = phase;
    }

    // The menu's picture at rest.
    static std::vector<std::uint32_t> pixels(MenuScreen& menu, ScreenlessWindow const& window) {
        draw_menu_phase(menu, 0.0F, 4100);
        return window.pixels();
    }

    WorkingDir folder_;
    Audio audio_;
    bool fullscreen_ = false;
};

} // namespace

TEST_F(ResizedMenu, LooksLikeOneThatWasOpenedAtThatSizeAndSoDoesItsHelp) {
    for (auto const& [size, phase] : {std::pair{SDL_Point{1000, 600}, ScreenPhase::MENU},
                                      {{1920, 1080}, ScreenPhase::MENU},
                                      {{800, 900}, ScreenPhase::MENU},
                                      {{1000, 600}, ScreenPhase::HELP},
                                      {{1920, 1080}, ScreenPhase::HELP}}) {
        ScreenlessWindow window({1280, 720});
        MenuScreen resized;
        open_menu(resized, window, phase);
        std::vector<std::uint32_t> const before = pixels(resized, window);
        window.resize(size);
        fit_menu(resized, 3000);
        fit_menu(resized, 3300);
        std::vector<std::uint32_t> const after = pixels(resized, window);

        MenuScreen fresh;
        open_menu(fresh, window, phase);
        EXPECT_NE(before.size(), after.size());
        EXPECT_EQ(pixels(fresh, window), after) << size.x << " x " << size.y;
        EXPECT_EQ(fresh.gain_x, resized.gain_x);
        EXPECT_EQ(fresh.gain_y, resized.gain_y);
        EXPECT_EQ(pixels(resized, window), after) << "and stays so";
    }
}
