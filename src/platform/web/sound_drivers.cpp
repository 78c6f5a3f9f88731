#include "platform/sound_drivers.h"

// The only one: no other is worth a wait.
std::vector<char const*> preferred_sound_drivers() {
    return {"emscripten"};
}
