#include "platform/sound_drivers.h"

std::vector<char const*> preferred_sound_drivers() {
    return {"wasapi", "directsound"};
}
