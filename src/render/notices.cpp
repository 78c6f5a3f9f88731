#include "render/notices.h"

#include "base/texts.h"
#include "render/colors.h"
#include "render/text.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr SDL_Color WARNING{255, 70, 60, 255};
constexpr SDL_Color TIME_LEFT{255, 220, 110, 255};
constexpr SDL_Color AHEAD{120, 235, 130, 255};
constexpr SDL_Color BEHIND{255, 115, 100, 255};
constexpr SDL_Color PLAIN{225, 228, 238, 255};
constexpr SDL_Color FAINT{165, 172, 188, 255};
constexpr SDL_Color RECORD{255, 220, 90, 255};

// Where the middle of a line stands, as a share of the view's height. The car is at one half, the
// finish's words at 0.25, a toast at 0.3. Near an edge of the track, where the camera stops, or
// with a large zoom a car may stand in the way: then the next place is taken.
constexpr std::array COUNTDOWN_Y{0.2, 0.55, 0.8};
constexpr std::array NAME_Y{0.36, 0.68, 0.92};
constexpr double WARNING_Y = 0.72;
constexpr double TIME_LEFT_Y = 0.8;
constexpr int GAP_Y = 36; // logical pixels from the view's top
constexpr int GAP_ROW_H = 24;
constexpr int PLATE_MARGIN = 7; // of the dark plate behind the gap
constexpr std::uint8_t PLATE_ALPHA = 190;

struct Line {
    TTF_Font* font;
    char const* text;
    SDL_Color color;
    std::uint8_t alpha;
};

std::uint8_t shadow(std::uint8_t alpha) {
    return static_cast<std::uint8_t>(alpha * 2 / 3);
}

int width_of(Fonts const& fonts, TTF_Font* font, char const* text) {
    int w = 0;
    int h = 0;
    measure_text(font, text_scale(fonts), text, &w, &h);
    return w;
}

void draw_line(SDL_Renderer* renderer, Fonts const& fonts, Line const& line, int x, int y) {
    if (line.alpha == 0) return;
    draw_with_shadow(renderer, line.font, text_scale(fonts), line.text, x, y, line.color,
                     line.alpha, shadow(line.alpha));
}

bool hides(SDL_Rect const& box, StandingCars const& cars) {
    return std::any_of(cars.at.begin(), cars.at.end(), [&](Vec2 car) {
        return car.x > box.x - cars.reach && car.x < box.x + box.w + cars.reach &&
               car.y > box.y - cars.reach && car.y < box.y + box.h + cars.reach;
    });
}

// The first of `shares` at which a text in the middle of `rect` hides no car.
double clear_share(SDL_Rect const& rect, Fonts const& fonts, TTF_Font* font, char const* text,
                   StandingCars const& cars, std::array<double, 3> const& shares) {
    int w = 0;
    int h = 0;
    measure_text(font, text_scale(fonts), text, &w, &h);
    auto const* const clear = std::find_if(shares.begin(), shares.end(), [&](double share) {
        int const y = rect.y + static_cast<int>(rect.h * share) - h / 2;
        return !hides({rect.x + (rect.w - w) / 2, y, w, h}, cars);
    });
    return clear != shares.end() ? *clear : shares.front();
}

// In the middle of `rect` from left to right, its own middle at `share` of the height.
void draw_centred(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                  Line const& line, double share) {
    int w = 0;
    int h = 0;
    if (!measure_text(line.font, text_scale(fonts), line.text, &w, &h)) return;
    int const y = rect.y + static_cast<int>(rect.h * share) - h / 2;
    if (line.alpha == 0) return;
    draw_outlined(renderer, line.font, text_scale(fonts), line.text, rect.x + (rect.w - w) / 2, y,
                  line.color, line.alpha);
}

// The columns of the result, as distances from the middle of the screen.
constexpr int NAME_LEFT = -330;
constexpr int TOTAL_RIGHT = -40;
constexpr int BEST_RIGHT = 90;
constexpr int GAP_RIGHT = 230;
constexpr int NOTE_LEFT = 250;
// And its lines, as distances from the middle of the screen down.
constexpr int TITLE_Y = 62;
constexpr int HEAD_Y = 126;
constexpr int FIRST_ROW_Y = 146;
constexpr int ROW_H = 28;
constexpr int REMATCH_Y = 226;

// What draws the pieces of the result.
struct Table {
    SDL_Renderer* renderer;
    Fonts const& fonts;
    int x;
    int y;
    std::uint8_t alpha;

    void left(TTF_Font* font, std::string const& text, int at, int down, SDL_Color color) const {
        draw_line(renderer, fonts, {font, text.c_str(), color, alpha}, x + at, y + down);
    }
    void right(TTF_Font* font, std::string const& text, int at, int down, SDL_Color color) const {
        left(font, text, at - width_of(fonts, font, text.c_str()), down, color);
    }
    void centred(TTF_Font* font, std::string const& text, int down, SDL_Color color) const {
        left(font, text, -width_of(fonts, font, text.c_str()) / 2, down, color);
    }
};

void draw_row(Table const& table, ResultRow const& row, int down) {
    TTF_Font* const font = table.fonts.hud_time;
    table.left(font, row.name, NAME_LEFT, down, row.color);
    table.right(font, row.total, TOTAL_RIGHT, down, PLAIN);
    table.right(font, row.best_lap, BEST_RIGHT, down, PLAIN);
    table.right(font, row.gap, GAP_RIGHT, down, PLAIN);
    table.left(font, row.note, NOTE_LEFT, down, RECORD);
}

} // namespace

void render_countdown(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      StandingCars const& cars, char const* text, std::uint8_t alpha) {
    int w = 0;
    int h = 0;
    if (!measure_text(fonts.winner, text_scale(fonts), text, &w, &h)) return;
    // All of the countdown at one place: its last word is the widest.
    double const share =
        clear_share(rect, fonts, fonts.winner, texts::COUNTDOWN.back(), cars, COUNTDOWN_Y);
    draw_embossed(renderer, fonts.winner, text_scale(fonts), text, rect.x + (rect.w - w) / 2,
                  rect.y + static_cast<int>(rect.h * share) - h / 2, {238, 185, 35},
                  {255, 248, 210}, {122, 72, 10}, alpha);
}

void render_name(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                 StandingCars const& cars, char const* text, SDL_Color color, std::uint8_t alpha) {
    draw_centred(renderer, rect, fonts, {fonts.record, text, color, alpha},
                 clear_share(rect, fonts, fonts.record, text, cars, NAME_Y));
}

void render_warning(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                    char const* text) {
    draw_centred(renderer, rect, fonts, {fonts.record, text, WARNING, 255}, WARNING_Y);
}

void render_time_left(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      char const* text) {
    draw_centred(renderer, rect, fonts, {fonts.record, text, TIME_LEFT, 255}, TIME_LEFT_Y);
}

void render_ghost_gap(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts, int row,
                      char const* text, bool ahead) {
    TTF_Font* const font = fonts.hud_time;
    int w = 0;
    int h = 0;
    if (!measure_text(font, text_scale(fonts), text, &w, &h)) return;
    int const x = rect.x + (rect.w - w) / 2;
    int const y = rect.y + GAP_Y + row * GAP_ROW_H;
    SDL_Rect const plate{x - PLATE_MARGIN, y, w + 2 * PLATE_MARGIN, GAP_ROW_H};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, PLATE_ALPHA);
    SDL_RenderFillRect(renderer, &plate);
    draw_ttf(renderer, font, text_scale(fonts), text, x, y + (GAP_ROW_H - h) / 2,
             ahead ? AHEAD : BEHIND, nullptr, nullptr, 255);
}

void render_result(SDL_Renderer* renderer, int width, int height, Fonts const& fonts,
                   ResultTable const& result, float fade) {
    auto const alpha =
        static_cast<std::uint8_t>(std::lround(std::clamp(fade, 0.0F, 1.0F) * 255.0F));
    Table const table{renderer, fonts, width / 2, height / 2, alpha};
    table.centred(fonts.record, result.title, TITLE_Y, result.title_color);
    table.right(fonts.hud_label, texts::TOTAL, TOTAL_RIGHT, HEAD_Y, FAINT);
    table.right(fonts.hud_label, texts::BEST_LAP, BEST_RIGHT, HEAD_Y, FAINT);
    table.right(fonts.hud_label, texts::GAP, GAP_RIGHT, HEAD_Y, FAINT);
    draw_row(table, result.rows[0], FIRST_ROW_Y);
    draw_row(table, result.rows[1], FIRST_ROW_Y + ROW_H);
    table.centred(fonts.hud_time, texts::REMATCH, REMATCH_Y, PLAIN);
}
