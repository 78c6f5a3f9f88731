#pragma once

// What is told over the race picture beside the words of overlays.h: single lines in a view, each
// at a place of its own, and the table of the result. All are stateless; a text that is empty draws
// nothing.

#include "base/fonts.h"
#include "base/player.h"
#include "world/geometry.h"

#include <array>
#include <cstdint>
#include <string>

// `rect` is the player's viewport in logical pixels.

// Where a view shows the cars, in logical pixels: what is told hides neither of them.
struct ShownCars {
    std::array<Vec2, 2> at;
    double reach = 0.0; // half a car's length
};

// A number of the countdown, or its end.
void render_countdown(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      ShownCars const& cars, char const* text, std::uint8_t alpha);
// Whose view this is.
void render_name(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                 ShownCars const& cars, char const* text, SDL_Color color, std::uint8_t alpha);
// Where a text stands clear of the cars, as a share of the view's height: what goes wrong, and how
// much time is left. The two never meet.
double warning_place(SDL_Rect const& rect, Fonts const& fonts, ShownCars const& cars,
                     char const* text);
double time_left_place(SDL_Rect const& rect, Fonts const& fonts, ShownCars const& cars,
                       char const* text);
// What goes wrong, at its place.
void render_warning(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                    char const* text, double place);
// How much time is left, at its place.
void render_time_left(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      char const* text, double place);
// Ahead of the ghost or behind it, on a plate below the bar.
void render_ghost_gap(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      char const* text, bool ahead);

// A player's row of the result.
struct ResultRow {
    std::string name;
    std::string total;
    std::string best_lap; // empty without a lap
    std::string gap;      // behind the winner, or why the race was not finished
    std::string note;     // what the lap has become
    SDL_Color color{};
    bool finished = true;
};

struct ResultTable {
    std::string title;
    SDL_Color title_color{};
    std::array<ResultRow, 2> rows; // the winner's first
};

// Below the words of game over, `fade` 0 to 1 like theirs.
void render_result(SDL_Renderer* renderer, int width, int height, Fonts const& fonts,
                   ResultTable const& result, float fade);
