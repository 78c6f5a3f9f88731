#pragma once

// What the game does about the events of a race: lines on standard output, sounds, records. In the
// race all that a step brings about beyond its own state happens here, right after the step.

#include "race/race_events.h"
#include "race/simulation.h"

#include <string>

struct Audio;

// What a report works on beside the events.
struct ReportContext {
    Simulation& sim;
    Audio& audio;
    std::string const& track_path;
    int track_slot;      // records are only kept for a slot above 0
    bool recorded;       // false: not even then
    std::string trouble; // a record or a ghost that could not be saved; empty for none
};

// Carries out all that `events` ask for, in their order, and notes in them which laps are records.
void report_events(ReportContext& report, RaceEvents& events);
