#include "audio/audio.h"
#include "records/printed.h"
#include "render/colors.h"
#include "screens/finish_sequence.h"
#include "support/canvas.h"
#include "support/keys.h"

#include <gtest/gtest.h>

#include <array>

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
    // Updates every millisecond; what is requested: when, the slot and its volume.
    std::string run(unsigned from, unsigned to) {
        std::string told;
        for (unsigned ms = from; ms < to; ++ms) {
            std::array const before{plays(CHIME), plays(CROWD), plays(FANFARE)};
            update(ms);
            for (std::size_t const slot : {CHIME, CROWD, FANFARE}) {
                if (plays(slot) == before.at(slot - CHIME)) continue;
                told += printed("%u: %zu at %.1f, ", ms, slot, static_cast<double>(volume(slot)));
            }
        }
        return told;
    }
    [[nodiscard]] unsigned plays(std::size_t slot) const {
        return audio.sfx_requests[slot].count();
    }
    [[nodiscard]] float volume(std::size_t slot) const { return audio.sfx_volume[slot]; }
};

TEST(FinishSequence, PlaysChimeCrowdAndFanfareOnceEachAtTheirTimes) {
    Timeline run;
    EXPECT_EQ(run.plays(CHIME), 0U) << "starting alone makes no sound";
    EXPECT_EQ(run.run(16, 60000), "16: 2 at 0.6, 500: 3 at 0.8, 7000: 4 at 1.0, ");
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
    EXPECT_EQ(run.run(120, 7501), "120: 2 at 0.6, 500: 3 at 0.8, ");
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
    EXPECT_EQ(run.run(9010, 9400), "9010: 2 at 0.6, ");
}

// Either ends the screen long before the fanfare, once it has been shown black.
TEST(FinishScreen, IsLeftByEscapeOrAQuit) {
    SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_TIMER);
    Canvas canvas(64, 36);
    struct Visit {
        Audio audio;
        SDL_Event event{};
    };
    auto const leave_after_the_chime = [](Uint32 again, void* what) -> Uint32 {
        auto& visit = *static_cast<Visit*>(what);
        if (visit.audio.sfx_requests[CHIME].count() == 0) return again;
        SDL_PushEvent(&visit.event);
        return 0;
    };
    for (SDL_Event const& event : {key_event(SDL_SCANCODE_ESCAPE), SDL_Event{.type = SDL_QUIT}}) {
        canvas.clear({200, 0, 0, 255});
        Visit visit;
        visit.event = event;
        SDL_AddTimer(1, leave_after_the_chime, &visit);
        EXPECT_EQ(run_finish_sequence(nullptr, canvas.renderer(), visit.audio),
                  event.type == SDL_KEYDOWN);
        EXPECT_EQ(visit.audio.sfx_requests[CHIME].count(), 1U);
        EXPECT_EQ(visit.audio.sfx_requests[FANFARE].count(), 0U);
        EXPECT_EQ(canvas.count({0, 0, 64, 36}, BLACK), 64 * 36);
    }
}

TEST(FinishScreen, LastsUntilTheFanfareHasRungOut) {
    Audio audio;
    EXPECT_EQ(finish_sequence_length_ms(audio), 7300U);
    audio.sfx_samples[FANFARE].resize(22050 / 2);
    EXPECT_EQ(finish_sequence_length_ms(audio), 7800U);
}

} // namespace
