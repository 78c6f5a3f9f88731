#include "screens/letter_grid.h"

#include "render/colors.h"
#include "screens/menu_drawing.h"
#include "screens/menu_focus.h"

#include <string_view>

namespace {

constexpr int PAGES = 4;
constexpr std::array<std::array<std::string_view, GRID_LETTER_ROWS>, PAGES> LETTERS{{
    {"ABCDEFGHIJ", "KLMNOPQRST", "UVWXYZ.-'!", "0123456789"},
    {"abcdefghij", "klmnopqrst", "uvwxyz.-'!", "0123456789"},
    {"ÄÖÜÀÁÂÃÅÆÇ", "ÈÉÊËÌÍÎÏÑØ", "ÒÓÔÕŒÙÚÛÝŠ", "ĆČĐĘĄŁŃŚŻŽ"},
    {"äöüàáâãåæç", "èéêëìíîïñø", "òóôõœùúûýß", "ćčđęąłńśżž"},
}};
// What leads on from a page: the next one.
constexpr std::array<char const*, PAGES> NEXT_PAGE{"abc", "ÄÖÜ", "äöü", "ABC"};
constexpr std::array<char const*, GRID_KEYS> KEYS{"", "space", "delete", "done"};
constexpr char const* GRID_HINT = "A  type      X  delete      Y  other letters      B  done";

constexpr float PANEL_Y = 0.62F; // its top, a share of the view's height
constexpr int CELL_W = 52;       // logical pixels
constexpr int CELL_H = 36;
constexpr int PANEL_PAD = 16;
constexpr int HINT_H = 26;
constexpr int ROWS = GRID_LETTER_ROWS + 1;

// Letter `index` of a row of UTF-8.
std::string letter(std::string_view row, int index) {
    auto const length = [](char lead) {
        auto const byte = static_cast<unsigned char>(lead);
        return byte < 0x80U ? 1U : byte < 0xE0U ? 2U : 3U;
    };
    std::size_t at = 0;
    for (int i = 0; i < index; ++i) at += length(row[at]);
    return std::string(row.substr(at, length(row[at])));
}

std::string letter_at(LetterGrid const& grid, int column, int row) {
    return letter(LETTERS.at(static_cast<std::size_t>(grid.page)).at(static_cast<std::size_t>(row)),
                  column);
}

void render_page(LetterGrid& grid, SDL_Renderer* renderer, double scale, TTF_Font* font) {
    grid.letters.clear();
    for (int row = 0; row < GRID_LETTER_ROWS; ++row) {
        for (int column = 0; column < GRID_COLUMNS; ++column) {
            grid.letters.push_back(
                make_label(renderer, scale, font, letter_at(grid, column, row).c_str(), WHITE));
        }
    }
    grid.keys[0] =
        make_label(renderer, scale, font, NEXT_PAGE.at(static_cast<std::size_t>(grid.page)), WHITE);
}

SDL_Rect panel(SDL_Rect const& view) {
    int const w = GRID_COLUMNS * CELL_W + 2 * PANEL_PAD;
    return {view.x + (view.w - w) / 2, place_y(view, PANEL_Y), w,
            ROWS * CELL_H + PANEL_PAD + HINT_H};
}

// The box of a cell; the four keys of the last row share its width.
SDL_Rect cell(SDL_Rect const& view, int column, int row) {
    SDL_Rect const all = panel(view);
    int const w = row < GRID_LETTER_ROWS ? CELL_W : GRID_COLUMNS * CELL_W / GRID_KEYS;
    return {all.x + PANEL_PAD + column * w, all.y + PANEL_PAD / 2 + row * CELL_H, w, CELL_H};
}

void draw_cell(SDL_Renderer* renderer, MenuLabel const& label, SDL_Rect const& box, bool focus) {
    draw_label(renderer, label, box.x + (box.w - label.w) / 2, box.y + (box.h - label.h) / 2,
               focus ? GOLD : SDL_Color{210, 225, 255, 255});
}

void draw_panel(SDL_Renderer* renderer, SDL_Rect const& box, SDL_Color edge) {
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, 10, 16, 42, 240);
    SDL_RenderFillRect(renderer, &box);
    SDL_SetRenderDrawColor(renderer, edge.r, edge.g, edge.b, 255);
    SDL_RenderDrawRect(renderer, &box);
}

} // namespace

void open_letter_grid(LetterGrid& grid, SDL_Renderer* renderer, double scale, TTF_Font* font,
                      TTF_Font* caption_font) {
    grid = {};
    grid.open = true;
    for (std::size_t i = 1; i < KEYS.size(); ++i) {
        grid.keys[i] = make_label(renderer, scale, font, KEYS[i], WHITE);
    }
    grid.hint = make_label(renderer, scale, caption_font, GRID_HINT, WHITE);
    render_page(grid, renderer, scale, font);
}

void close_letter_grid(LetterGrid& grid) {
    grid = {};
}

void next_letter_page(LetterGrid& grid, SDL_Renderer* renderer, double scale, TTF_Font* font) {
    grid.page = (grid.page + 1) % PAGES;
    render_page(grid, renderer, scale, font);
}

void move_in_grid(LetterGrid& grid, int dx, int dy) {
    int const row = (grid.row + dy + ROWS) % ROWS;
    bool const to_keys = row == GRID_LETTER_ROWS && grid.row != row;
    bool const from_keys = grid.row == GRID_LETTER_ROWS && grid.row != row;
    if (to_keys) grid.column = grid.column * GRID_KEYS / GRID_COLUMNS;
    if (from_keys) grid.column = grid.column * GRID_COLUMNS / GRID_KEYS + 1;
    grid.row = row;
    int const columns = row < GRID_LETTER_ROWS ? GRID_COLUMNS : GRID_KEYS;
    grid.column = (grid.column + dx + columns) % columns;
}

std::string focused_letter(LetterGrid const& grid) {
    return grid.row < GRID_LETTER_ROWS ? letter_at(grid, grid.column, grid.row) : std::string();
}

GridKey focused_key(LetterGrid const& grid) {
    return static_cast<GridKey>(grid.column);
}

void draw_letter_grid(SDL_Renderer* renderer, LetterGrid const& grid, SDL_Rect const& view,
                      SDL_Color player, unsigned now) {
    draw_panel(renderer, panel(view), player);
    for (int i = 0; i < static_cast<int>(grid.letters.size()); ++i) {
        int const column = i % GRID_COLUMNS;
        int const row = i / GRID_COLUMNS;
        draw_cell(renderer, grid.letters[static_cast<std::size_t>(i)], cell(view, column, row),
                  column == grid.column && row == grid.row);
    }
    for (int i = 0; i < GRID_KEYS; ++i) {
        draw_cell(renderer, grid.keys[static_cast<std::size_t>(i)], cell(view, i, GRID_LETTER_ROWS),
                  grid.row == GRID_LETTER_ROWS && i == grid.column);
    }
    SDL_Rect const box = panel(view);
    draw_label(renderer, grid.hint, box.x + (box.w - grid.hint.w) / 2,
               box.y + box.h - HINT_H + (HINT_H - grid.hint.h) / 2, DIM);
    SDL_Rect at = cell(view, grid.column, grid.row);
    at = {at.x + 7, at.y + 7, at.w - 14, at.h - 14}; // the frame stands on the cell's edge
    draw_focus(renderer, at, now);
}
