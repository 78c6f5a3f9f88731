#pragma once

// The tuning and view settings that the game keeps as globals. A test may set any of them: the test
// program's main puts all back to their values of a fresh start after each test.

#include "base/own_place.h"
#include "render/view_settings.h"
#include "world/car_bump.h"
#include "world/car_physics.h"
#include "world/track.h"

#include <array>

class GlobalsGuard {
public:
    GlobalsGuard() = default;
    GlobalsGuard(GlobalsGuard const&) = delete;
    GlobalsGuard& operator=(GlobalsGuard const&) = delete;
    ~GlobalsGuard() {
        for (Tuning const& one : tuning_) *one.global = one.value;
        PIXELS_PER_CELL = pixels_per_cell_;
        ZOOM_LEVEL = zoom_level_;
        smooth_camera = smooth_camera_;
        fancy_ghost = fancy_ghost_;
        OWN_PLACE.clear();
    }

private:
    struct Tuning {
        double* global;
        double value;
        explicit Tuning(double& of) : global(&of), value(of) {}
    };

    std::array<Tuning, 14> tuning_{
        Tuning{SIM_ACC},         Tuning{SIM_TURN},     Tuning{SIM_GRIP},
        Tuning{SIM_SKID},        Tuning{SIM_SKID_THR}, Tuning{SIM_VSCALE},
        Tuning{SIM_REV_MAX},     Tuning{SIM_TURN_SK},  Tuning{SIM_SIDE_GRIP},
        Tuning{SIM_RW_RESIST},   Tuning{SIM_SPEED},    Tuning{arcade_restitution},
        Tuning{arcade_friction}, Tuning{arcade_spin}};
    std::int32_t pixels_per_cell_ = PIXELS_PER_CELL;
    std::int32_t zoom_level_ = ZOOM_LEVEL;
    bool smooth_camera_ = smooth_camera;
    bool fancy_ghost_ = fancy_ghost;
};
