#pragma once

// What happened in the race, as plain records. The rules append them in the order of the events;
// whoever ran the rules prints, sounds and saves what they tell (race_report.h), or only looks.

#include <cstdint>
#include <vector>

enum class RaceEventKind : std::uint8_t {
    CountdownBeep, // `number` 0 to 3, 3 is GO
    ClockStarted,  // a flying start has reached the line
    WrongWay,      // the line was crossed backwards; laps stop counting
    BackAcross,    // and has been crossed back
    Lap,           // `number`, `time_ms`, `is_best`, `has_ghost`
    Finished,      // the player's race is over; `is_first` for the winner's
    OutOfTime,     // the player was stopped
    WallHit,       // `loudness`
    Bump,          // of both cars, `loudness`
};

struct RaceEvent {
    RaceEventKind kind{};
    int player = 0; // id 1 or 2; 0 where it is not one player's
    int number = 0;
    std::uint32_t time_ms = 0; // simulated time of the lap
    bool is_best = false;      // the player's best since the records were cleared
    bool has_ghost = false;    // the lap's recording has just become `best_trace`
    int record = 0;            // what the report made of the lap: 1 personal best, 2 lap record
    bool is_first = false;
    float loudness = 0.0F; // 0.2 to 1
};

using RaceEvents = std::vector<RaceEvent>;
