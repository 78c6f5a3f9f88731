#include "audio/audio.h"
#include "screens/finish_sequence.h"
#include "support/canvas.h"

#include <gtest/gtest.h>

namespace {

constexpr std::size_t CHIME = 2;
constexpr std::size_t CROWD = 3;
constexpr std::size_t FANFARE = 4;

// A running sequence, updated at whatever moments the test names; ms after its start.
struct Timeline {
    static constexpr unsigned START = 0xFFFFFF00; // the tick counter wraps in the first second
    Audio audio;
    FinishSeq seq;

    Timeline() { finish_seq_start(seq, START); }
    void update(unsigned ms) { finish_seq_update(seq, audio, START + ms); }
    void game_over(unsigned ms) { finish_seq_game_over(seq, START + ms, 400); }
    [[nodiscard]] unsigned plays(std::size_t slot) const {
        return audio.sfx_requests[slot].count();
    }
    [[nodiscard]] float volume(std::size_t slot) const { return audio.sfx_volume[slot]; }
};

TEST(FinishSequence, PlaysChimeCrowdAndFanfareOnceEachAtTheirTimes) {
    Timeline run;
    EXPECT_EQ(run.plays(CHIME), 0U) << "starting alone makes no sound";
    run.update(16);
    EXPECT_EQ(run.plays(CHIME), 1U);
    EXPECT_FLOAT_EQ(run.volume(CHIME), 0.6F);
    run.update(499);
    EXPECT_EQ(run.plays(CROWD), 0U);
    run.update(500);
    EXPECT_EQ(run.plays(CROWD), 1U);
    EXPECT_FLOAT_EQ(run.volume(CROWD), 0.8F);
    run.update(6999);
    EXPECT_EQ(run.plays(FANFARE), 0U);
    run.update(7000);
    EXPECT_FLOAT_EQ(run.volume(FANFARE), 1.0F);
    run.update(60000);
    for (std::size_t const slot : {CHIME, CROWD, FANFARE}) EXPECT_EQ(run.plays(slot), 1U) << slot;
    EXPECT_TRUE(run.seq.active) << "only finish_seq_stop ends it";
}

TEST(FinishSequence, FadesTheCrowdInAStraightLineFromSixToEightSeconds) {
    Timeline run;
    run.update(500);
    for (auto const& [ms, volume] : {std::pair{6000U, 0.8F},
                                     {6500U, 0.6F},
                                     {7000U, 0.4F},
                                     {7900U, 0.04F},
                                     {8000U, 0.0F},
                                     {20000U, 0.0F}}) {
        run.update(ms);
        EXPECT_NEAR(run.volume(CROWD), volume, 1e-6F) << ms;
    }
}

TEST(FinishSequence, GameOverFadesAPlayingFanfareIn400Ms) {
    Timeline run;
    run.update(7000);
    run.game_over(9000);
    run.game_over(9300); // too late to change anything
    run.update(9100);
    EXPECT_FLOAT_EQ(run.volume(FANFARE), 0.75F);
    for (unsigned const ms : {9400U, 9900U}) {
        run.update(ms);
        EXPECT_EQ(run.volume(FANFARE), 0.0F);
    }
    EXPECT_EQ(run.plays(FANFARE), 1U);
}

TEST(FinishSequence, EarlyGameOverKeepsChimeAndCrowdButNeverLetsTheFanfareStart) {
    Timeline run;
    run.game_over(100);
    run.update(120);
    EXPECT_EQ(run.plays(CHIME), 1U);
    EXPECT_EQ(run.plays(CROWD), 0U);
    run.update(510);
    EXPECT_EQ(run.plays(CROWD), 1U);
    run.update(7500);
    EXPECT_EQ(run.plays(FANFARE), 0U);
    EXPECT_NEAR(run.volume(CROWD), 0.2F, 1e-6F);
}

TEST(FinishSequence, StopSilencesAtOnceAndANewStartBeginsAfresh) {
    Timeline run;
    run.update(7000);
    finish_seq_stop(run.seq, run.audio);
    run.update(7010);
    for (std::size_t const slot : {CHIME, CROWD, FANFARE}) {
        EXPECT_EQ(run.volume(slot), 0.0F) << slot;
    }
    finish_seq_start(run.seq, Timeline::START + 9000);
    run.update(9010);
    EXPECT_EQ(run.plays(CHIME), 2U);
    EXPECT_EQ(run.plays(CROWD), 1U);
}

// Either ends the screen long before the fanfare, once it has been shown black.
TEST(FinishScreen, IsLeftByEscapeOrAQuit) {
    SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_TIMER);
    Canvas canvas(64, 36);
    for (SDL_EventType const type : {SDL_KEYDOWN, SDL_QUIT}) {
        canvas.clear({200, 0, 0, 255});
        SDL_Event event{};
        event.type = type;
        event.key.keysym.scancode = SDL_SCANCODE_ESCAPE;
        auto const push = [](Uint32, void* what) -> Uint32 {
            SDL_PushEvent(static_cast<SDL_Event*>(what));
            return 0;
        };
        SDL_AddTimer(50, push, &event);
        Audio audio;
        EXPECT_EQ(run_finish_sequence(nullptr, canvas.renderer(), audio), type == SDL_KEYDOWN);
        EXPECT_EQ(audio.sfx_requests[CHIME].count(), 1U);
        EXPECT_EQ(audio.sfx_requests[FANFARE].count(), 0U);
        EXPECT_EQ(canvas.count({0, 0, 64, 36}, {0, 0, 0, 255}), 64 * 36);
    }
    SDL_QuitSubSystem(SDL_INIT_VIDEO | SDL_INIT_TIMER);
}

TEST(FinishScreen, LastsUntilTheFanfareHasRungOut) {
    Audio audio;
    EXPECT_EQ(finish_sequence_length_ms(audio), 7300U);
    audio.sfx_samples[FANFARE].resize(22050 / 2);
    EXPECT_EQ(finish_sequence_length_ms(audio), 7800U);
}

} // namespace
