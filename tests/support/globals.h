#pragma once

// The tuning and view settings that the game keeps as globals. A test may set any of them: the test
// program's main puts all back to their values of a fresh start after each test.

#include "base/own_place.h"
#include "render/view_settings.h"
#include "world/car_bump.h"
#include "world/car_physics.h"
#include "world/track.h"

#include <tuple>

inline auto globals() {
    return std::tie(SIM_ACC, SIM_TURN, SIM_GRIP, SIM_SKID, SIM_SKID_THR, SIM_VSCALE, SIM_REV_MAX,
                    SIM_TURN_SK, SIM_SIDE_GRIP, SIM_RW_RESIST, SIM_SPEED, arcade_restitution,
                    arcade_friction, arcade_spin, PIXELS_PER_CELL, ZOOM_LEVEL, smooth_camera,
                    fancy_ghost, OWN_PLACE);
}

// The values of a tuple of references.
template <typename... Values>
std::tuple<Values...> values_of(std::tuple<Values&...> of) {
    return of;
}
