// The main of every test program: no window, no sound server, and records in a place of their own.

#include "support/files.h"

#include <SDL.h>
#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
    TempDir const preferences;
    setenv("XDG_DATA_HOME", preferences.path().c_str(), 1);
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    testing::InitGoogleTest(&argc, argv);
    SDL_SetMainReady();
    TTF_Init();
    int const status = RUN_ALL_TESTS();
    TTF_Quit();
    SDL_Quit();
    return status;
}
