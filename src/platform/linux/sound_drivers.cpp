#include "platform/sound_drivers.h"

// The sound servers of a desktop.
std::vector<char const*> preferred_sound_drivers() {
    return {"pulseaudio", "pipewire"};
}
