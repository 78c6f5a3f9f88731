#pragma once

// The fonts of menu and help, whose texts are rendered once and stay.

#include "base/sdl_handles.h"

#include <array>

// The first of two fonts that opens at `size` pixels; null if neither does. Its letters stand where
// their widths put them and not on whole pixels, so that small text is as close and as bold as
// large.
FontHandle open_screen_font(std::array<char const*, 2> const& paths, int size);
