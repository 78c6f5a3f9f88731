#pragma once

// What a car is to the simulation, and the only way in for whoever drives it. The ground floor of
// the house: no dependencies.

// The dynamic state of one car; also one frame of a recorded lap, written to ghost files as it
// lies in memory. Positions in cells (x right, y down), angles in radians (0 along +x, growing
// towards +y, clockwise on the screen), speeds in cells per tick (1 ms).
struct CarState {
    double x = 0.0;
    double y = 0.0;
    double speed = 0.0;      // length of the velocity, never negative
    double heading = 0.0;    // where the nose points, within -pi..pi
    double travel_dir = 0.0; // where the car moves; equals heading at a speed below 1e-9
    double throttle = 0.0;   // signed engine speed: the speed that grip gives; negative backwards
    bool skidding = false;
    bool in_wall = false; // true only within a tick, between the hit and its handling
};
static_assert(sizeof(CarState) == 56, "ghost files hold frames of 56 bytes");

// The four controls of one tick, whoever holds them: keys, gamepad, AI or a test.
struct Input {
    bool gas = false;
    bool brake = false; // handbrake; reverse from a standstill
    bool left = false;
    bool right = false;
};
