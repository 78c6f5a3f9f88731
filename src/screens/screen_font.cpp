#include "screens/screen_font.h"

FontHandle open_screen_font(std::array<char const*, 2> const& paths, int size) {
    for (char const* path : paths) {
        FontHandle font(TTF_OpenFont(path, size));
        if (!font) continue;
        TTF_SetFontHinting(font.get(), TTF_HINTING_LIGHT_SUBPIXEL);
        return font;
    }
    return nullptr;
}
