#pragma once

// Pads that exist only in SDL, for a library that is loaded before SDL into the real program: they
// are plugged in, moved and pulled out by lines. What their motors are told goes to standard
// output.
//
//   plug NAME pad|stick     a controller that SDL knows, or a joystick that it does not
//   unplug NAME
//   button NAME BUTTON 0|1  BUTTON by SDL's name ("a", "dpleft", "start") or by its number
//   axis NAME AXIS VALUE    AXIS by SDL's name ("leftx", "righttrigger") or by its number

#include <string>

void obey_pad_line(std::string const& line);
