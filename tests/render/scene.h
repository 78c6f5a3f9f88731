#pragma once

// Small worlds for the tests of the race picture.

#include "base/car_state.h"
#include "base/fonts.h"
#include "render/view_settings.h"
#include "world/track.h"

#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

inline Track track_of(std::vector<std::string> const& rows) {
    Track track;
    track.width = static_cast<int>(rows.front().size());
    track.height = static_cast<int>(rows.size());
    for (std::string const& row : rows) {
        track.cells.insert(track.cells.end(), row.begin(), row.end());
    }
    return track;
}

inline Track road(int width, int height) {
    return track_of(std::vector<std::string>(static_cast<std::size_t>(height),
                                             std::string(static_cast<std::size_t>(width), '.')));
}

inline CarState car_at(double x, double y) {
    return {.x = x, .y = y};
}

// All race fonts from one face that Debian ships, so that widths are known.
struct MonoFonts {
    Fonts fonts;

    explicit MonoFonts(double scale = 1.0) {
        fonts.phys_scale = scale;
        fonts.hud_label = open(scale * 13);
        fonts.hud_small = open(scale * 14);
        fonts.hud_time = open(scale * 20);
        fonts.lap_time = open(scale * 90);
        fonts.record = open(scale * 40);
        fonts.intro = open(scale * 34);
        fonts.winner = open(scale * 96);
    }

    static TTF_Font* open(double size) {
        return TTF_OpenFont("/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf",
                            static_cast<int>(size));
    }
    static int width(TTF_Font* font, char const* text) {
        int w = 0;
        TTF_SizeUTF8(font, text, &w, nullptr);
        return w;
    }
};
