// Checks all that a game folder holds as the game will load it.
//   content_check [GAME_FOLDER]
// One line for each thing, then "N passed, N failed"; exit status 1 if anything is wrong.

#include "content_check/checks.h"
#include "content_check/report.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <cstdio>
#include <filesystem>

int main(int argc, char** argv) {
    std::error_code error;
    if (argc > 1) std::filesystem::current_path(argv[1], error);
    if (error || argc > 2) {
        std::fprintf(stderr, "usage: content_check [GAME_FOLDER]\n");
        return 2;
    }
    SDL_SetMainReady();
    IMG_Init(IMG_INIT_PNG);
    TTF_Init();

    Report report;
    check_fonts(report);
    check_art(report);
    check_audio(report);
    check_engines(report);
    check_track_pictures(report);
    check_tracks(report);

    TTF_Quit();
    IMG_Quit();
    std::printf("%d passed, %d failed\n", report.passed(), report.failed());
    return report.failed() == 0 ? 0 : 1;
}
