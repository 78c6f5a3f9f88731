#pragma once

// What a car is told to do, in a form that a test can read.

#include "base/player.h"

#include <string>

// The controls that are on, as letters: gas, brake, left, right.
inline std::string on(Input const& input) {
    std::string letters;
    if (input.gas) letters += 'g';
    if (input.brake) letters += 'b';
    if (input.left) letters += 'l';
    if (input.right) letters += 'r';
    return letters;
}
