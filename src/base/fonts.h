#pragma once

// The open fonts of the race screens, at physical size.

#include <SDL_ttf.h>

struct Fonts {
    TTF_Font* hud_label = nullptr; // logical size 13
    TTF_Font* hud_small = nullptr; // 14
    TTF_Font* hud_time = nullptr;  // 20
    TTF_Font* lap_time = nullptr;  // 90
    TTF_Font* record = nullptr;    // 40
    TTF_Font* intro = nullptr;     // 34
    TTF_Font* winner = nullptr;    // 96
    double phys_scale = 1.0;       // physical pixels per logical pixel

    Fonts() = default;
    Fonts(Fonts const&) = delete;
    Fonts& operator=(Fonts const&) = delete;
    ~Fonts();

    // Opens all seven at `scale`; the first that does not open ends the process with a message, and
    // after `last_words`, if there are any.
    void open_all(double scale, void (*last_words)() = nullptr);
    // Brings those that are open to another scale.
    void fit(double scale);
    // Closes what is open, last to first.
    void close();
};
