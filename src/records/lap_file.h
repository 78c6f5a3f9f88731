#pragma once

// One lap in one small file, for friends to race against: who drove it, on which grid, how fast,
// and its ghost, bit for bit.
//
// A ghost is a car's state at every tick, 3.3 MB a minute, full of digits that no packer can guess.
// But nearly every state is what the physics makes of the one before, given four controls and
// whether the ground was kerb. So a byte a tick says by which of these 32 ways the state came, or
// that it only stood still, or that it has to be given in full: a car that met a wall. Those bytes
// zlib packs a hundredfold. A sum over all that the file says makes sure that damage is noticed,
// and so is another physics, of some other version of the game.

#include "base/car_state.h"
#include "world/track.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct SharedLap {
    std::string player;
    std::string track;         // the track's name, for people
    std::uint64_t grid = 0;    // fingerprint of the grid it was driven on
    std::uint32_t time_ms = 0; // lap time
    unsigned ticks_per_step = 1;
    std::vector<CarState> frames;
};

// The same for equal cells and sizes, whatever the file is called.
std::uint64_t grid_fingerprint(Track const& track);
// 16 hexadecimal digits.
std::string fingerprint_text(std::uint64_t fingerprint);

// The file's bytes; nothing, with the reason in `fault`, for what no car can have driven: names
// that do not fit in the table of best laps, more than ten minutes, states out of all bounds.
std::optional<std::string> pack_lap(SharedLap const& lap, std::string& fault);

// The lap that `bytes` hold, wholly checked, the same bits as were packed; nothing, with the reason
// in `fault`, for anything else. Takes memory for ten minutes of driving at most.
std::optional<SharedLap> unpack_lap(std::string const& bytes, std::string& fault);
