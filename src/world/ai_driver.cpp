#include "world/ai_driver.h"

#include "base/player.h"

Input ai_drive(Player const& me, Player const& other, Track const& track) {
    return drive(me.car, other.car, track);
}
