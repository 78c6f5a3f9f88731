#include "audio/audio.h"
#include "screens/menu_screen.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL_image.h>
#include <SDL_ttf.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

// A window of the driver without a screen, a real menu in it.
class ResizedMenu : public testing::Test {
protected:
    ResizedMenu() {
        SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        SDL_InitSubSystem(SDL_INIT_VIDEO);
        TTF_Init();
        fs::create_directories("art/fonts");
        fs::create_directory("tracks");
        std::string const faces = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf";
        for (char const* name :
             {"Quango-xlVR.otf", "StarJediOutline-y0xm.ttf", "Montserrat-SemiBoldItalic.otf"}) {
            fs::create_symlink(faces, fs::path("art/fonts") / name);
        }
        picture("art/menu_header_alpha.png", 600, 200, {0, 0, 0, 0});
        picture("art/start_racing4.png", 1060, 180, {200, 40, 40, 255});
        picture("art/mouse2b.png", 240, 300, {250, 250, 250, 255});
        write_file("tracks/1_one.trk", "");
        picture("tracks/1_one.png", 1200, 900, {10, 200, 90, 255});
        write_file("tracks/7_seven.trk", "");
        picture("tracks/7_seven.png", 900, 900, {200, 100, 90, 255});
    }
    ~ResizedMenu() override {
        SDL_DestroyRenderer(renderer_);
        SDL_DestroyWindow(window_);
    }

    static void picture(char const* path, int w, int h, SDL_Color color) {
        IMG_SavePNG(make_surface(w, h, color).get(), path);
    }

    void open_window(int w, int h) {
        window_ = SDL_CreateWindow("", 0, 0, w, h, SDL_WINDOW_RESIZABLE);
        renderer_ = SDL_CreateRenderer(window_, -1, SDL_RENDERER_SOFTWARE);
        SDL_RenderSetLogicalSize(renderer_, 1280, 720);
    }

    void open_menu(MenuScreen& menu, ScreenPhase phase) {
        menu.window = window_;
        menu.renderer = renderer_;
        menu.audio = &audio_;
        menu.fullscreen = &fullscreen_;
        set_up_menu(menu, false);
        menu.names.fields[0].text = "Zoe";
        for (SDL_Scancode const key : {SDL_SCANCODE_7, SDL_SCANCODE_R, SDL_SCANCODE_F1}) {
            SDL_Event event{};
            event.type = SDL_KEYDOWN;
            event.key.keysym.scancode = key;
            handle_menu_event(menu, event, 1000);
        }
        menu.sparkle.intro_at = 1000;
        menu.start.shown_at = 1000;
        menu.cursor.visible = true;
        menu.cursor.moved_at = 4000;
        menu.screen_phase = phase;
    }

    // The menu's picture at rest.
    std::vector<std::uint32_t> pixels(MenuScreen& menu) {
        draw_menu_phase(menu, 0.0F, 4100);
        int w = 0;
        int h = 0;
        SDL_GetRendererOutputSize(renderer_, &w, &h);
        std::vector<std::uint32_t> read(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
        SDL_RenderSetLogicalSize(renderer_, 0, 0);
        SDL_RenderReadPixels(renderer_, nullptr, SDL_PIXELFORMAT_ARGB8888, read.data(), w * 4);
        SDL_RenderSetLogicalSize(renderer_, 1280, 720);
        return read;
    }

    TempDir folder_;
    WorkingDir there_{folder_.path()};
    Audio audio_;
    bool fullscreen_ = false;
    SDL_Window* window_ = nullptr;
    SDL_Renderer* renderer_ = nullptr;
};

} // namespace

TEST_F(ResizedMenu, LooksLikeOneThatWasOpenedAtThatSizeAndSoDoesItsHelp) {
    struct Case {
        int w;
        int h;
        ScreenPhase phase;
    };
    for (Case const& to : {Case{1000, 600, ScreenPhase::MENU}, Case{1920, 1080, ScreenPhase::MENU},
                           Case{800, 900, ScreenPhase::MENU}, Case{1000, 600, ScreenPhase::HELP},
                           Case{1920, 1080, ScreenPhase::HELP}}) {
        open_window(1280, 720);
        MenuScreen resized;
        open_menu(resized, to.phase);
        std::vector<std::uint32_t> const before = pixels(resized);
        SDL_SetWindowSize(window_, to.w, to.h);
        SDL_PumpEvents();
        fit_menu(resized, 3000);
        fit_menu(resized, 3300);
        std::vector<std::uint32_t> const after = pixels(resized);

        MenuScreen fresh;
        open_menu(fresh, to.phase);
        EXPECT_NE(before.size(), after.size());
        EXPECT_EQ(pixels(fresh), after) << to.w << " x " << to.h;
        EXPECT_EQ(fresh.gain_x, resized.gain_x);
        EXPECT_EQ(fresh.gain_y, resized.gain_y);
        EXPECT_EQ(pixels(resized), after) << "and stays so";
        resized = {};
        fresh = {};
        SDL_DestroyRenderer(renderer_);
        SDL_DestroyWindow(window_);
        renderer_ = nullptr;
        window_ = nullptr;
    }
}
