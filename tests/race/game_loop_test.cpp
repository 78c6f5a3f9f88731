#include "audio/audio.h"
#include "race/game_loop.h"
#include "render/scene.h"
#include "support/allocations.h"
#include "support/canvas.h"
#include "support/files.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int FRAMES = 600;
constexpr std::uint32_t FRAME_MS = 20;
// Two views of two cars' marks: the points, the vertices and the indices of each.
constexpr std::uint64_t LISTS_OF_MARKS = std::uint64_t{2} * 2 * 3;
// A trail is kept in blocks of 16 points, under a list of blocks that may grow. At full speed a car
// lays 43 points in a frame.
constexpr std::uint64_t BLOCKS_OF_TRAILS = std::uint64_t{2} * 4;

bool has_marks(GameLoop const& loop) {
    return !loop.sim.p1.view.skid_points.empty() || !loop.sim.p2.view.skid_points.empty();
}

// On the narrow built-in course the drivers slide through every bend.
void end_slides(GameLoop& loop) {
    for (Player* player : {&loop.sim.p1, &loop.sim.p2}) {
        player->car.skidding = false;
        player->view.skid_active = false;
        player->view.skid_points.clear();
    }
}

// How often operator new runs in a frame that is given FRAME_MS of race.
std::uint64_t allocations_of_a_frame(GameLoop& loop) {
    loop.last_ticks = SDL_GetTicks() - FRAME_MS;
    std::uint64_t const before = allocation_count();
    loop.frame();
    return allocation_count() - before;
}

} // namespace

// Two computer drivers race on the built-in course, with text and all; nothing else is there.
TEST(GameLoop, AllocatesInAFrameOnlyForTyreMarks) {
    WorkingDir const folder;
    SDL_InitSubSystem(SDL_INIT_VIDEO);
    Canvas const canvas(320, 180); // small, as it is the drawing that takes the time
    SDL_RenderSetLogicalSize(canvas.renderer(), 1280, 720);
    MonoFonts const mono;
    Audio audio;
    GameLoop loop(nullptr, canvas.renderer(), audio, mono.fonts, true, false, true, true, false,
                  false, 0, 0);
    loop.initial_setup();
    loop.show_fps = true;
    allocations_of_a_frame(loop); // the queue of events is made on the way

    int plain = 0;
    int marked = 0;
    std::uint64_t most = 0;
    for (int i = 0; i < FRAMES; ++i) {
        if (i % 2 == 0) end_slides(loop); // or there would be marks at all times
        bool const marks_before = has_marks(loop);
        std::uint64_t const spent = allocations_of_a_frame(loop);
        bool const marks = marks_before || has_marks(loop);
        ++(marks ? marked : plain);
        most = std::max(most, spent);
        ASSERT_LE(spent, marks ? LISTS_OF_MARKS + BLOCKS_OF_TRAILS : 0) << "frame " << i;
    }
    EXPECT_GT(plain, 50);
    EXPECT_GT(marked, 50);
    EXPECT_GT(most, 0U); // the count counts
    EXPECT_GT(loop.sim.p1.view.laps_done, 0);
}
