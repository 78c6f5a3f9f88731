#include "render/view_settings.h"

#include <cmath>

std::int32_t ZOOM_LEVEL = 0;
bool smooth_camera = false;
bool fancy_ghost = false;

double zoom_factor() {
    return std::exp2(ZOOM_LEVEL * 0.25);
}
