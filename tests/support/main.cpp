// The main of every test program: no window, no sound server, records in a place of their own, and
// the same globals before each test.

#include "support/files.h"
#include "support/globals.h"

#include <SDL.h>
#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

class FreshGlobals : public testing::EmptyTestEventListener {
    void OnTestEnd(testing::TestInfo const&) override { globals() = at_start_; }
    decltype(values_of(globals())) const at_start_ = values_of(globals());
};

} // namespace

int main(int argc, char** argv) {
    TempDir const preferences;
    setenv("XDG_DATA_HOME", preferences.path().c_str(), 1);
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(
        std::make_unique<FreshGlobals>().release());
    SDL_SetMainReady();
    TTF_Init();
    int const status = RUN_ALL_TESTS();
    TTF_Quit();
    SDL_Quit();
    return status;
}
