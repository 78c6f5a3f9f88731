#include "world/surface.h"

namespace {

constexpr float GRASS_RUMBLE = 1.0F; // also beyond the grid
constexpr float KERB_RUMBLE = 0.6F;

} // namespace

SurfaceEffect sample_surface(Track const& track, CarState const& car, float& rumble) {
    rumble = 0.0F;
    Cell const at = cell_at(car.x, car.y);
    std::uint8_t const cell =
        track.contains(at.column, at.row) ? track.cells[track.index(at.column, at.row)] : 'g';
    if (cell == 'g') rumble = GRASS_RUMBLE;
    if (!cell_is_kerb(cell)) return {};
    rumble = KERB_RUMBLE;
    return {SIM_RW_RESIST};
}
