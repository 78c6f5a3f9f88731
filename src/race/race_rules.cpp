#include "race/race_rules.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::uint32_t, GO_STEP + 1> BEEPS_AT_MS{0, 1000, 2000, 3000};
constexpr std::uint32_t MUSIC_AFTER_GO_MS = 300;

void go(Simulation& sim, std::uint32_t now) {
    for (Player* player : {&sim.p1, &sim.p2}) {
        start_clocks(*player, static_cast<double>(sim.sim_time_ms));
        player->trace.clear();
    }
    sim.countdown.active = false;
    sim.music_start_tick = now + MUSIC_AFTER_GO_MS;
}

} // namespace

void run_countdown(Simulation& sim, std::uint32_t now, RaceEvents& events) {
    Countdown& countdown = sim.countdown;
    if (!countdown.active) return;
    std::uint32_t const elapsed = now - countdown.start_tick;
    while (countdown.step <= GO_STEP) {
        if (elapsed < BEEPS_AT_MS.at(static_cast<std::size_t>(countdown.step))) return;
        events.push_back({.kind = RaceEventKind::CountdownBeep, .number = countdown.step});
        if (countdown.step == GO_STEP) go(sim, now);
        ++countdown.step;
    }
}

bool start_music_after_go(Simulation& sim, std::uint32_t now) {
    if (sim.music_start_tick == 0 || sim.music_start_tick > now) return false;
    sim.music_on = true;
    sim.music_start_tick = 0;
    return true;
}

void stop_who_is_out_of_time(Simulation& sim, std::uint32_t now, RaceEvents& events) {
    if (sim.laps <= 0 || sim.first_finish_tick == 0) return;
    if (now - sim.first_finish_tick < OUT_OF_TIME_MS) return;
    for (Player* player : {&sim.p1, &sim.p2}) {
        if (player->view.finished_ms != 0) continue;
        end_race_of(*player, now, static_cast<double>(sim.sim_time_ms));
        events.push_back({.kind = RaceEventKind::OutOfTime, .player = player->id});
    }
}

void hold_clocks(Simulation& sim) {
    for (Player* player : {&sim.p1, &sim.p2}) {
        if (sim.countdown.active) player->input = {};
        if (sim.countdown.active || player->waiting_for_line) {
            start_clocks(*player, static_cast<double>(sim.sim_time_ms));
        }
        // Until the car has faded out it still answers to its driver.
        if (player->view.finished_ms != 0 && player->view.car_alpha == 0) player->input = {};
    }
}

float presence(PlayerView const& view, std::uint32_t now) {
    if (view.finished_ms == 0) return 1.0F;
    std::uint32_t const elapsed = now - view.finished_ms;
    if (elapsed >= FADE_OUT_MS) return 0.0F;
    return 1.0F - static_cast<float>(elapsed) / static_cast<float>(FADE_OUT_MS);
}

bool race_is_over(Simulation const& sim, std::uint32_t now) {
    if (sim.game_over || sim.laps <= 0) return false;
    auto const gone = [now](Player const& player) {
        std::uint32_t const finished = player.view.finished_ms;
        return finished != 0 && now - finished >= FADE_OUT_MS;
    };
    return gone(sim.p1) && gone(sim.p2);
}
