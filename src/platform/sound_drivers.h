#pragma once

#include <vector>

// SDL's names of the drivers that are waited for, in order of preference, before SDL may choose.
std::vector<char const*> preferred_sound_drivers();
