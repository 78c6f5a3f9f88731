#include "race/race_report.h"

#include "audio/audio.h"
#include "audio/music_fade.h"
#include "base/say.h"
#include "base/texts.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/printed.h"
#include "records/replace_file.h"
#include "screens/finish_sequence.h"

#include <array>
#include <cerrno>
#include <cstdio>

namespace {

struct Beep {
    float hz;
    float seconds;
    float volume;
};

constexpr Beep COUNT_BEEP{660.0F, 0.18F, 0.55F};
constexpr Beep GO_BEEP{990.0F, 0.9F, 0.75F};
constexpr std::array<Beep, 4> COUNTDOWN_BEEPS{COUNT_BEEP, COUNT_BEEP, COUNT_BEEP, GO_BEEP};
constexpr Beep BEST_LAP_BEEP{1320.0F, 0.2F, 0.6F};
constexpr Beep LAP_BEEP{880.0F, 0.2F, 0.6F};

void sound(Audio& audio, Beep const& beep) {
    audio.request_beep(beep.hz, beep.seconds, beep.volume);
}

Player& player_of(Simulation& sim, RaceEvent const& event) {
    return event.player == sim.p2.id ? sim.p2 : sim.p1;
}

// Offers a best lap to the table, and puts its ghost to disk if it made the table.
void keep_record(ReportContext& report, Player& player, RaceEvent& lap) {
    if (!lap.is_best || report.track_slot <= 0 || player.name.empty() || !report.recorded) return;
    std::string const file = ghost_file_name(player.name, report.track_path);
    std::string reason;
    int const rank =
        record_best_lap(player.name, report.track_slot, lap.time_ms / 1000.0, file, &reason);
    if (!reason.empty()) report.trouble = printed(texts::RECORD_LOST, reason.c_str());
    player.view.lap_overlay_record = lap.record = rank;
    // The old ghost may be that of a faster lap, if nobody knows.
    if (rank == 0 || !lap.has_ghost || reason == TABLE_UNREADABLE) return;
    errno = 0;
    if (!save_ghost_trace(pref_path(file.c_str()), player.best_trace, player.best_trace_substeps)) {
        report.trouble = printed(texts::GHOST_LOST, failure_reason().c_str());
        return;
    }
    std::string const frames = std::to_string(player.best_trace.size());
    say("P%d ghost saved: %s (%s frames)\n", player.id, file.c_str(), frames.c_str());
}

void report_lap(ReportContext& report, RaceEvent& lap) {
    keep_record(report, player_of(report.sim, lap), lap);
    sound(report.audio, lap.is_best ? BEST_LAP_BEEP : LAP_BEEP);
    say("P%d lap %d: %u.%03u s%s\n", lap.player, lap.number, lap.time_ms / 1000, lap.time_ms % 1000,
        lap.is_best ? "  (best)" : "");
}

void fade_race_music(ReportContext& report) {
    auto const seconds = static_cast<double>(finish_seq_music_fade_s());
    report.audio.music_fade_step =
        seconds > 0.01 ? fade_step_of(report.audio, seconds) : QUICK_FADE_STEP;
    report.audio.music_playing = false;
    report.sim.music_on = false;
}

void report_event(ReportContext& report, RaceEvent& event) {
    switch (event.kind) {
    case RaceEventKind::CountdownBeep:
        return sound(report.audio, COUNTDOWN_BEEPS.at(static_cast<std::size_t>(event.number)));
    case RaceEventKind::ClockStarted:
        return say("P%d flying start: clock running\n", event.player);
    case RaceEventKind::WrongWay:
        return say("P%d crossed goal line backwards\n", event.player);
    case RaceEventKind::BackAcross:
        return say("P%d back across goal line (no lap counted)\n", event.player);
    case RaceEventKind::Lap:
        return report_lap(report, event);
    case RaceEventKind::Finished:
        if (event.is_first) fade_race_music(report);
        return say("P%d finished the race\n", event.player);
    case RaceEventKind::OutOfTime:
        return say("P%d out of time — race over\n", event.player);
    case RaceEventKind::WallHit:
        return report.audio.request_wall_hit(event.player - 1, event.loudness);
    case RaceEventKind::Bump:
        report.audio.request_wall_hit(0, event.loudness);
        report.audio.request_wall_hit(1, event.loudness);
        return;
    }
}

} // namespace

void report_events(ReportContext& report, RaceEvents& events) {
    for (RaceEvent& event : events) report_event(report, event);
}
