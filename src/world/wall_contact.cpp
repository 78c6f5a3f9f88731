#include "world/wall_contact.h"

#include "audio/audio.h"
#include "base/player.h"

void handle_wall_hit_alt(Player& player, Track const& track, CarState const& before, Audio& audio,
                         int player_index) {
    float const loudness = bounce_off_wall(player.car, track, before);
    if (player_index == 0 || player_index == 1) audio.request_wall_hit(player_index, loudness);
}

bool find_open_dir(Player const& player, Track const& track, double* angle) {
    return find_open_dir(player.car, track, angle);
}

bool slide_out_of_stuck(Player& player, Track const& track) {
    return slide_out_of_stuck(player.car, track);
}
