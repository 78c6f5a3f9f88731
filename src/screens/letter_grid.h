#pragma once

// Letters for a name without a keyboard: a panel over the tracks, four pages of them, and a row of
// keys under them for the page, a blank, deleting and the end.

#include "screens/menu_label.h"

#include <SDL.h>

#include <array>
#include <string>
#include <vector>

constexpr int GRID_COLUMNS = 10;
constexpr int GRID_LETTER_ROWS = 4;
constexpr int GRID_KEYS = 4; // in the row under the letters

enum class GridKey : int { Page, Blank, Delete, Done };

struct LetterGrid {
    bool open = false;
    int page = 0;
    int column = 0;
    int row = 0;
    std::vector<MenuLabel> letters; // of the page, white
    std::array<MenuLabel, GRID_KEYS> keys;
    MenuLabel hint;
};

// Opens on the first page, and renders it; `font` also renders names, `caption_font` the hint.
void open_letter_grid(LetterGrid& grid, SDL_Renderer* renderer, double scale, TTF_Font* font,
                      TTF_Font* caption_font);
void close_letter_grid(LetterGrid& grid);
void next_letter_page(LetterGrid& grid, SDL_Renderer* renderer, double scale, TTF_Font* font);
// Moves the focus, round the edges.
void move_in_grid(LetterGrid& grid, int dx, int dy);
// The letter that has the focus; empty on the row of keys.
std::string focused_letter(LetterGrid const& grid);
GridKey focused_key(LetterGrid const& grid);

void draw_letter_grid(SDL_Renderer* renderer, LetterGrid const& grid, SDL_Rect const& view,
                      SDL_Color player, unsigned now);
