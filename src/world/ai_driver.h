#pragma once

// The computer driver on the competitors of a race.

#include "world/driver.h"

struct Player;

// The controls for `me` at this moment.
Input ai_drive(Player const& me, Player const& other, Track const& track);
