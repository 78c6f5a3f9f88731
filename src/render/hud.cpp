#include "render/hud.h"

#include "render/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr int GAUGE_WIDTH = 140;          // less a digit's width
constexpr double GAUGE_FULL_SPEED = 0.31; // cells per tick
constexpr int COLUMN_GAP = 14;
constexpr int LABEL_GAP = 5; // between a label and the widest number behind it

constexpr SDL_Color LAP_COLOR = {200, 200, 210, 255};
constexpr SDL_Color LAP_TIME_COLOR = {255, 240, 130, 255};
constexpr SDL_Color BEST_COLOR = {120, 220, 140, 255};
constexpr SDL_Color TOTAL_COLOR = {240, 240, 240, 255};
constexpr SDL_Color GHOST_COLOR = {180, 160, 220, 255};

// What every piece of the bar needs.
struct Bar {
    SDL_Renderer* renderer;
    SDL_Rect const& rect;
    Fonts const& fonts;
    double scale;
};

int text_width(Bar const& bar, TTF_Font* font, char const* text) {
    int w = 0;
    int h = 0;
    measure_text(font, bar.scale, text, &w, &h);
    return w;
}

// The top of a text that stands in the middle of the bar.
int centred_y(Bar const& bar, TTF_Font* font, char const* text) {
    int w = 0;
    int h = 0;
    if (!measure_text(font, bar.scale, text, &w, &h)) return bar.rect.y + BAR_HEIGHT / 2;
    return bar.rect.y + (BAR_HEIGHT - h) / 2;
}

void draw_text(Bar const& bar, TTF_Font* font, char const* text, int x, int y, SDL_Color color) {
    draw_ttf(bar.renderer, font, bar.scale, text, x, y, color, nullptr, nullptr, 255);
}

void draw_text_right(Bar const& bar, TTF_Font* font, std::string const& text, int right, int y,
                     SDL_Color color) {
    draw_text(bar, font, text.c_str(), right - text_width(bar, font, text.c_str()), y, color);
}

void fill(Bar const& bar, SDL_Rect const& area, SDL_Color color) {
    SDL_SetRenderDrawColor(bar.renderer, color.r, color.g, color.b, color.a);
    SDL_RenderFillRect(bar.renderer, &area);
}

int gauge_width(Bar const& bar) {
    return GAUGE_WIDTH - text_width(bar, bar.fonts.hud_time, "0");
}

void draw_gauge(Bar const& bar, CarState const& car) {
    int const width = gauge_width(bar);
    int const x = bar.rect.x + bar.rect.w - width - 8;
    int const y = bar.rect.y + 12;
    int const filled = static_cast<int>(width * std::clamp(car.speed / GAUGE_FULL_SPEED, 0.0, 1.0));
    fill(bar, {x, y, width, 6}, {60, 60, 60, 200});
    if (filled == 0) return; // some renderers give an empty rectangle a pixel's width
    fill(bar, {x, y, filled, 6},
         car.skidding ? SDL_Color{220, 80, 80, 255} : SDL_Color{80, 200, 80, 255});
}

// Edges of the columns. They hold the widest numbers, so that nothing moves as these change.
struct Columns {
    int ghost_left;
    int total_left;
    int total_right;
    int best_left;
    int best_right;
    int lap_time_right;
};

Columns columns_of(Bar const& bar) {
    TTF_Font* label = bar.fonts.hud_label;
    int const number = LABEL_GAP + text_width(bar, bar.fonts.hud_small, "99:99.99");
    int const best_w = text_width(bar, label, "BEST") + number;
    int const total_w = text_width(bar, label, "TOTAL") + number;
    Columns c{};
    c.ghost_left =
        bar.rect.x + bar.rect.w - gauge_width(bar) - 22 - text_width(bar, label, "GHOST");
    c.total_right = c.ghost_left - COLUMN_GAP;
    c.total_left = c.total_right - total_w;
    c.best_right = c.total_left - COLUMN_GAP;
    c.best_left = c.best_right - best_w;
    c.lap_time_right = c.best_left - COLUMN_GAP;
    return c;
}

void draw_lap_label(Bar const& bar, int laps_done, int total_laps) {
    std::array<char, 32> text{};
    int const lap = laps_done + 1;
    if (total_laps > 0) {
        std::snprintf(text.data(), text.size(), "LAP %d/%d", std::min(lap, total_laps), total_laps);
    } else {
        std::snprintf(text.data(), text.size(), "LAP %d", lap);
    }
    TTF_Font* font = bar.fonts.hud_label;
    draw_text(bar, font, text.data(), bar.rect.x + 26, centred_y(bar, font, text.data()),
              LAP_COLOR);
}

// How far the numbers stand below the labels' top, so that both share a baseline.
int baseline_shift(Bar const& bar) {
    if (bar.fonts.hud_label == nullptr || bar.fonts.hud_small == nullptr) return 0;
    int const difference =
        TTF_FontAscent(bar.fonts.hud_label) - TTF_FontAscent(bar.fonts.hud_small);
    return static_cast<int>(std::lround(difference / bar.scale));
}

void draw_labelled_time(Bar const& bar, char const* label, unsigned ms, int left, int right,
                        SDL_Color color) {
    TTF_Font* font = bar.fonts.hud_label;
    int const indent = 2 * text_width(bar, font, "0") / 3;
    int const y = centred_y(bar, font, label);
    draw_text(bar, font, label, left + indent, y, color);
    draw_text_right(bar, bar.fonts.hud_small, format_time_long(ms), right, y + baseline_shift(bar),
                    color);
}

} // namespace

void render_hud(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                CarState const& car, int total_laps, unsigned lap_ms, unsigned total_ms,
                Fonts const& fonts, bool show_ghost) {
    Bar const bar = {renderer, rect, fonts, text_scale(fonts)};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    fill(bar, {rect.x, rect.y, rect.w, BAR_HEIGHT}, {0, 0, 0, 150});
    SDL_Color const chip = view.body_color;
    fill(bar, {rect.x + 6, rect.y + 9, 12, 12}, {chip.r, chip.g, chip.b, 255});
    draw_gauge(bar, car);

    Columns const columns = columns_of(bar);
    draw_lap_label(bar, view.laps_done, total_laps);
    std::string const lap_time = format_time_short(lap_ms);
    draw_text_right(bar, fonts.hud_time, lap_time, columns.lap_time_right,
                    centred_y(bar, fonts.hud_time, lap_time.c_str()), LAP_TIME_COLOR);
    if (view.best_lap_ms != 0) {
        draw_labelled_time(bar, "BEST", view.best_lap_ms, columns.best_left, columns.best_right,
                           BEST_COLOR);
    }
    if (view.laps_done > 0) {
        draw_labelled_time(bar, "TOTAL", total_ms, columns.total_left, columns.total_right,
                           TOTAL_COLOR);
    }
    if (show_ghost) {
        draw_text(bar, fonts.hud_label, "GHOST", columns.ghost_left,
                  centred_y(bar, fonts.hud_label, "GHOST"), GHOST_COLOR);
    }
}
