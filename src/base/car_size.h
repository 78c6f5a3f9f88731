#pragma once

// How large a car is, for whoever draws it and for the boxes that bump: logical pixels at zoom
// level 0, before the magnifier that makes a car easy to see.

constexpr double CAR_HALF_LENGTH = 11.0;
constexpr double CAR_HALF_WIDTH = 5.5;
constexpr double CAR_MAGNIFIER = 1.2;
