#include "world/arcade_bump.h"

#include "audio/audio.h"

bool arcade_car_bump(CarState& a, CarState& b, int sound_a, int sound_b, Track const& track,
                     Audio& audio) {
    Bump const bump = bump_cars(a, b, track);
    if (bump.loudness > 0.0F) {
        for (int const sound : {sound_a, sound_b}) {
            if (sound == 0 || sound == 1) audio.request_wall_hit(sound, bump.loudness);
        }
    }
    return bump.touching;
}
