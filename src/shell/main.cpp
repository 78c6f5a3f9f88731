// The whole life of the process: options, one-shot modes, the folder to play in, SDL, sound,
// window, renderer, fonts, and then the race screen until it ends. What lives for the whole run
// lives on this file's stack frames and is lent to everything else.

#include "audio/audio.h"
#include "base/fonts.h"
#include "base/screen.h"
#include "input/gamepad_monitor.h"
#include "platform/console.h"
#include "platform/files.h"
#include "race/game_loop.h"
#include "race/simulation.h"
#include "records/ghost_trace.h"
#include "records/ghost_tuning_screen.h"
#include "records/highscore_report.h"
#include "render/image.h"
#include "screens/finish_sequence.h"
#include "screens/fullscreen.h"
#include "shell/game_folder.h"
#include "shell/options.h"
#include "shell/out_of_memory.h"
#include "shell/window_watch.h"
#include "shell/winner_screen.h"
#include "world/car_physics.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>

namespace {

struct Screen {
    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
};

int write_report(Options const& options) {
    std::string const out = options.highscores_out.empty()
                                ? sanitize_filename(options.highscores_name) + "_highscores.pdf"
                                : options.highscores_out;
    std::filesystem::path const here = std::filesystem::current_path();
    enter_game_folder(); // for the tracks' names and pictures
    bool const moved = std::filesystem::current_path() != here;
    bool const written =
        write_highscore_pdf(options.highscores_name, moved ? to_text(here / to_path(out)) : out);
    SDL_Quit();
    return written ? 0 : 1;
}

// Modes that need no window of ours; their exit status, if one was asked for.
std::optional<int> run_console_modes(Options const& options) {
    if (!options.highscores_name.empty()) return write_report(options);
    if (options.gamepad_test) {
        int const status = run_gamepad_test();
        SDL_Quit();
        return status;
    }
    return std::nullopt;
}

// No failure of sound stops the game: without a driver for it the rest comes up alone, and opening
// the device has a try of its own later.
bool start_sdl() {
    unsigned const rest = SDL_INIT_VIDEO | SDL_INIT_JOYSTICK;
    return SDL_Init(rest | SDL_INIT_AUDIO) == 0 || SDL_Init(rest) == 0;
}

bool start_libraries() {
    // Textures that want smooth scaling ask for it one by one. SDL's list of hints has no lock: it
    // must be complete before the sound's thread looks into it.
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "0");
    if (!start_sdl()) {
        std::fprintf(stderr, "SDL_Init failed: %s\n", SDL_GetError());
        return false;
    }
    if ((IMG_Init(IMG_INIT_PNG) & IMG_INIT_PNG) == 0) {
        std::fprintf(stderr, "IMG_Init: %s\n", IMG_GetError());
    }
    if (TTF_Init() != 0) std::fprintf(stderr, "TTF_Init: %s\n", TTF_GetError());
    return true;
}

// Whether SDL's choice of a renderer will be OpenGL. A window that is not made for it is destroyed
// and made again with the renderer: a flash on the screen, and a sixth of a second of the player's
// time.
bool will_draw_by_opengl() {
    SDL_RendererInfo first{};
    return SDL_GetHint(SDL_HINT_RENDER_DRIVER) == nullptr &&
           SDL_GetRenderDriverInfo(0, &first) == 0 && std::string_view(first.name) == "opengl";
}

// A window of 2560 x 1440, or the whole desktop. The full-screen window is made at the desktop's
// size: where no window manager resizes it, a larger one would stay as it was made and show a
// corner of the picture.
SDL_Window* create_window(bool windowed) {
    unsigned const state = !windowed                ? unsigned{SDL_WINDOW_FULLSCREEN_DESKTOP}
                           : has_room_for_window(0) ? 0U
                                                    : unsigned{SDL_WINDOW_MAXIMIZED};
    unsigned const flags =
        SDL_WINDOW_SHOWN | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI | state;
    SDL_DisplayMode desktop{};
    bool const known = !windowed && SDL_GetDesktopDisplayMode(0, &desktop) == 0;
    auto const create = [&](unsigned more_flags) {
        return SDL_CreateWindow("Brindle Run", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                known ? desktop.w : WINDOW_W, known ? desktop.h : WINDOW_H,
                                flags | more_flags);
    };
    SDL_Window* window = will_draw_by_opengl() ? create(SDL_WINDOW_OPENGL) : nullptr;
    return window != nullptr ? window : create(0);
}

// Without a display SDL falls back on a driver that draws into memory. The game must not run on
// there, unseen and for ever, unless somebody has asked for such a driver.
bool has_display() {
    char const* const wanted = SDL_getenv("SDL_VIDEODRIVER");
    if (wanted != nullptr && *wanted != '\0') return true;
    char const* const driver = SDL_GetCurrentVideoDriver();
    return driver != nullptr && std::string_view(driver) != "offscreen" &&
           std::string_view(driver) != "dummy";
}

// The drawing that the desktop shows for the window; none is no loss.
void set_icon(SDL_Window* window) {
    SurfaceHandle const icon = load_picture("art/icon.png");
    if (icon) SDL_SetWindowIcon(window, icon.get());
}

std::optional<Screen> open_screen(bool windowed) {
    Screen screen;
    if (!has_display()) {
        std::fprintf(stderr, "Window: there is no display\n");
        return std::nullopt;
    }
    screen.window = create_window(windowed);
    if (screen.window == nullptr) {
        std::fprintf(stderr, "Window: %s\n", SDL_GetError());
        return std::nullopt;
    }
    set_icon(screen.window);
    SDL_ShowCursor(SDL_DISABLE);
    screen.renderer = SDL_CreateRenderer(screen.window, -1,
                                         SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC |
                                             SDL_RENDERER_TARGETTEXTURE);
    if (screen.renderer == nullptr) {
        std::fprintf(stderr, "Renderer: %s\n", SDL_GetError());
        return std::nullopt;
    }
    SDL_RenderSetLogicalSize(screen.renderer, SCREEN_W, SCREEN_H);
    return screen;
}

// Prints what the game runs on; the physical scale of text, physical pixels per logical pixel.
double report_screen(Screen const& screen) {
    int out_w = 0;
    int out_h = 0;
    SDL_GetRendererOutputSize(screen.renderer, &out_w, &out_h);
    int const display = SDL_GetWindowDisplayIndex(screen.window);
    SDL_DisplayMode mode{};
    if (display >= 0 && SDL_GetCurrentDisplayMode(display, &mode) == 0) {
        std::printf("display: %dx%d pts (%dx%d px) @ %d Hz (render vsync-driven; physics %u Hz × "
                    "%d substeps)\n",
                    mode.w, mode.h, out_w, out_h, mode.refresh_rate, STEPS_PER_SECOND,
                    static_cast<int>(SIM_SPEED));
    }
    double const phys_scale = output_scale(screen.renderer);
    SDL_RendererInfo info{};
    bool const known = SDL_GetRendererInfo(screen.renderer, &info) == 0;
    std::printf("renderer: backend='%s' output=%dx%d (logical %dx%d, phys_scale=%.2f)\n",
                known ? info.name : "?", out_w, out_h, SCREEN_W, SCREEN_H, phys_scale);
    std::fflush(stdout);
    return phys_scale;
}

void tear_down(Audio& audio, Screen const& screen) {
    audio.close();
    SDL_DestroyRenderer(screen.renderer);
    SDL_DestroyWindow(screen.window);
    TTF_Quit();
    IMG_Quit();
    SDL_Quit();
}

// Returns whether a screen that needs no fonts was asked for; it has run then.
bool run_fontless_screen(Options const& options, Screen const& screen, Audio& audio) {
    if (options.finish) {
        run_finish_sequence(screen.window, screen.renderer, audio);
    } else if (options.test_ghost) {
        run_test_ghost(screen.window, screen.renderer);
    } else {
        return false;
    }
    tear_down(audio, screen);
    return true;
}

void run_game(Options const& options, Screen const& screen, Audio& audio, Fonts const& fonts) {
    {
        GameLoop loop(screen.window, screen.renderer, audio, fonts, options.fast, options.arcade,
                      options.ai, options.ai2, options.menu, options.help_screen, options.track,
                      options.race_laps);
        loop.run();
    }
    SDL_SetRelativeMouseMode(SDL_FALSE);
    audio.close();
}

} // namespace

int main(int argc, char** argv) {
    end_when_out_of_memory();
    join_console();
    Options const options = parse_cmdline(argc, argv);
    if (std::optional<int> const status = run_console_modes(options)) return *status;
    bool const has_data = enter_game_folder();
    if (!start_libraries()) return 1;

    Audio audio;
    if (!audio.open()) std::fprintf(stderr, "continuing without audio\n");
    std::optional<Screen> const screen = open_screen(options.win);
    if (!screen) {
        audio.close();
        return 1;
    }
    if (run_fontless_screen(options, *screen, audio)) return 0;

    Fonts fonts;
    fonts.open_all(report_screen(*screen), has_data ? nullptr : tell_missing_data);
    WindowWatch const watch(screen->renderer, fonts);
    if (options.winner) {
        run_winner_screen(screen->renderer, fonts);
        fonts.close();
        tear_down(audio, *screen);
    } else {
        run_game(options, *screen, audio, fonts);
    }
    return 0;
}
