#pragma once

// A race without window, sound or keyboard, driven by the AI as fast as the machine goes: for
// tests, benchmarks and the checking of tracks. Simulated time is the only time in it, so that the
// same track gives the same race every time.

#include "race/race_events.h"
#include "race/simulation.h"
#include "world/track.h"

#include <array>
#include <cstdint>
#include <vector>

struct HeadlessSetup {
    bool ai_red = true;
    bool ai_blue = true;
    bool arcade = false; // the cars bump, as they do wherever the AI drives in the game
    bool flying_start = true;
    int laps = 0; // 0 means no end
};

// What a car has done so far.
struct HeadlessLog {
    std::vector<std::uint32_t> lap_ms; // one entry for each completed lap
    double stuck_seconds = 0.0;        // simulated time in which the AI wanted to go and did not
    int hits = 0;                      // on walls and, in arcade mode, on the other car
    double top_speed = 0.0;            // cells per tick
};

struct HeadlessRace {
    Track track;
    Simulation sim;
    RaceEvents events; // of the last step
    HeadlessSetup setup;
    std::array<HeadlessLog, 2> log; // red, blue
    std::uint64_t steps = 0;
};

// The PIXELS_PER_CELL that the game gives `track`. It says how large a car is in cells, and with it
// how far apart the cars start and how they bump.
int game_scale(Track const& track);

// Puts both cars of `race` on `track`, ready for the first step. Undriven cars stand.
void headless_start(HeadlessRace& race, Track track, HeadlessSetup const& setup);

// One 10 ms step. The drivers decide 60 times a simulated second, as they do on a display.
void headless_step(HeadlessRace& race);

// Steps until both cars have finished or `seconds` of simulated time have gone by.
void headless_run(HeadlessRace& race, double seconds);

// A fingerprint of both cars' motion, to be carried from step to step: equal if and only if, for
// all practical purposes, the two races were the same bit for bit.
std::uint64_t headless_hash(HeadlessRace const& race, std::uint64_t before);
constexpr std::uint64_t HEADLESS_HASH_START = 14695981039346656037ULL;
