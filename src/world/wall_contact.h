#pragma once

// The walls as a competitor meets them: the bounce of wall_bounce.h on a player's car, with its
// sound.

#include "world/wall_bounce.h"

struct Audio;
struct Player;

// bounce_off_wall for the player's car. Requests the thump; `player_index` is 0 for red and 1 for
// blue, any other makes no sound.
void handle_wall_hit_alt(Player& player, Track const& track, CarState const& before, Audio& audio,
                         int player_index);

// The same as for the player's car.
bool find_open_dir(Player const& player, Track const& track, double* angle);
bool slide_out_of_stuck(Player& player, Track const& track);
