#include "race/headless_race.h"

#include "race/race_tick.h"
#include "render/track_view.h"
#include "world/ai_driver.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::uint64_t DECISIONS_PER_SECOND = 60;

// True in the steps that begin a frame of the imagined display.
bool frame_begins(std::uint64_t step) {
    return step == 0 || step * DECISIONS_PER_SECOND / STEPS_PER_SECOND !=
                            (step - 1) * DECISIONS_PER_SECOND / STEPS_PER_SECOND;
}

void decide(HeadlessRace& race) {
    Player& red = race.sim.p1;
    Player& blue = race.sim.p2;
    if (race.setup.ai_red) red.input = ai_drive(red, blue, race.track);
    if (race.setup.ai_blue) blue.input = ai_drive(blue, red, race.track);
    for (Player* player : {&red, &blue}) {
        if (player->view.finished_ms != 0) player->input = {};
    }
}

bool concerns(RaceEvent const& event, Player const& player) {
    return event.player == player.id || event.player == 0;
}

void note_step(HeadlessLog& log, Player const& player, RaceEvents const& events) {
    for (RaceEvent const& event : events) {
        if (!concerns(event, player)) continue;
        if (event.kind == RaceEventKind::Lap) log.lap_ms.push_back(event.time_ms);
        if (event.loudness > 0.0F) ++log.hits;
    }
    if (player.input.gas && !has_got_away(player)) log.stuck_seconds += 1.0 / STEPS_PER_SECOND;
    log.top_speed = std::max(log.top_speed, player.car.speed);
}

std::uint64_t bits_of(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

std::uint64_t mix_in(std::uint64_t hash, std::uint64_t bits) {
    for (int byte = 0; byte < 8; ++byte) {
        hash = (hash ^ (bits >> (8 * byte) & 0xFFU)) * 1099511628211ULL;
    }
    return hash;
}

} // namespace

int game_scale(Track const& track) {
    return drawing_scale(wished_pixels_per_cell(track));
}

void headless_start(HeadlessRace& race, Track track, HeadlessSetup const& setup) {
    race.track = std::move(track);
    race.setup = setup;
    race.sim.track = &race.track;
    race.sim.flying_start = setup.flying_start;
    race.sim.practice = true;
    race.sim.laps = setup.laps;
    race.sim.p1.id = 1;
    race.sim.p2.id = 2;
    line_up_players(race.sim, race.track);
}

void headless_step(HeadlessRace& race) {
    if (frame_begins(race.steps)) decide(race);
    race.events.clear();
    RaceContext context{.sim = race.sim,
                        .track = race.track,
                        .events = race.events,
                        .now = static_cast<std::uint32_t>(race.sim.sim_time_ms + STEP_MS),
                        .arcade = race.setup.arcade,
                        .ticks_per_step = ticks_per_step()};
    race_step(context);
    ++race.steps;
    note_step(race.log[0], race.sim.p1, race.events);
    note_step(race.log[1], race.sim.p2, race.events);
}

void headless_run(HeadlessRace& race, double seconds) {
    auto const steps = static_cast<std::uint64_t>(std::max(seconds, 0.0) * STEPS_PER_SECOND);
    for (std::uint64_t step = 0; step < steps; ++step) {
        if (race.sim.p1.view.finished_ms != 0 && race.sim.p2.view.finished_ms != 0) return;
        headless_step(race);
    }
}

std::uint64_t headless_hash(HeadlessRace const& race, std::uint64_t before) {
    std::uint64_t hash = before;
    for (Player const* player : {&race.sim.p1, &race.sim.p2}) {
        CarState const& car = player->car;
        for (double const value :
             {car.x, car.y, car.speed, car.heading, car.travel_dir, car.throttle}) {
            hash = mix_in(hash, bits_of(value));
        }
        hash = mix_in(hash, car.skidding ? 1 : 0);
    }
    return hash;
}
