#include "base/fonts.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr char const* MONTSERRAT_BLACK = "art/fonts/Montserrat-Black.otf";
constexpr char const* MONO = "art/fonts/LiberationMono-Bold.ttf";
constexpr char const* BRUSH = "art/fonts/RocketBrush-DYwyW.otf";

struct FontEntry {
    TTF_Font* Fonts::*field;
    char const* path;
    int logical_size;
};

// In the order of opening.
constexpr std::array<FontEntry, 7> FONT_TABLE = {{
    {&Fonts::hud_label, MONTSERRAT_BLACK, 13},
    {&Fonts::hud_small, MONO, 14},
    {&Fonts::hud_time, MONO, 20},
    {&Fonts::lap_time, MONO, 90},
    {&Fonts::record, MONTSERRAT_BLACK, 40},
    {&Fonts::intro, BRUSH, 34},
    {&Fonts::winner, MONTSERRAT_BLACK, 96},
}};

constexpr int SMALLEST_SIZE = 6; // physical pixels; below this nothing can be read

int physical_size(FontEntry const& entry, double scale) {
    return std::max(SMALLEST_SIZE, static_cast<int>(std::round(scale * entry.logical_size)));
}

TTF_Font* open_or_die(FontEntry const& entry, double scale, void (*last_words)()) {
    TTF_Font* font = TTF_OpenFont(entry.path, physical_size(entry, scale));
    if (font == nullptr) {
        std::fprintf(stderr, "FATAL: cannot open font %s: %s\n", entry.path, SDL_GetError());
        if (last_words != nullptr) last_words();
        // No tear-down: the audio thread may be running, and nothing is worth saving yet.
        std::_Exit(EXIT_FAILURE);
    }
    return font;
}

} // namespace

Fonts::~Fonts() {
    close();
}

void Fonts::open_all(double scale, void (*last_words)()) {
    close();
    phys_scale = scale;
    for (FontEntry const& entry : FONT_TABLE) {
        this->*entry.field = open_or_die(entry, scale, last_words);
    }
}

void Fonts::fit(double scale) {
    phys_scale = scale;
    for (FontEntry const& entry : FONT_TABLE) {
        TTF_Font* const font = this->*entry.field;
        if (font != nullptr) TTF_SetFontSize(font, physical_size(entry, scale));
    }
}

void Fonts::close() {
    std::for_each(FONT_TABLE.rbegin(), FONT_TABLE.rend(), [this](FontEntry const& entry) {
        TTF_Font*& font = this->*entry.field;
        if (font != nullptr) TTF_CloseFont(font);
        font = nullptr;
    });
}
