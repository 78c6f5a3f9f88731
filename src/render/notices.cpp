#include "render/notices.h"

#include "base/texts.h"
#include "render/colors.h"
#include "render/plate.h"
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
constexpr std::array WARNING_Y{0.72, 0.3, 0.88};
constexpr std::array TIME_LEFT_Y{0.8, 0.38, 0.64};
constexpr int GAP_Y = 34; // logical pixels from the view's top
constexpr int GAP_H = 28;
constexpr int GAP_MARGIN = 10;                           // of the plate behind the gap
constexpr PlateLook GAP_PLATE{6.0F, {0, 0, 0, 165}, {}}; // nearly the bar's

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

bool hides(SDL_Rect const& box, ShownCars const& cars) {
    return std::any_of(cars.at.begin(), cars.at.end(), [&](Vec2 car) {
        return car.x > box.x - cars.reach && car.x < box.x + box.w + cars.reach &&
               car.y > box.y - cars.reach && car.y < box.y + box.h + cars.reach;
    });
}

// The first of `shares` at which a text in the middle of `rect` hides no car.
double clear_share(SDL_Rect const& rect, Fonts const& fonts, TTF_Font* font, char const* text,
                   ShownCars const& cars, std::array<double, 3> const& shares) {
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

// The result's lines, as distances from the middle of the screen down, and what lies around them.
constexpr int PLATE_TOP = 66;
constexpr int TITLE_Y = 72;
constexpr int HEAD_Y = 132;
constexpr int LINE_Y = 153;
constexpr int FIRST_ROW_Y = 158;
constexpr int ROW_H = 30;
constexpr int PLATE_BOTTOM = FIRST_ROW_Y + 2 * ROW_H + 12;
constexpr int REMATCH_Y = PLATE_BOTTOM + 14;
constexpr int RESULT_MARGIN = 28; // between the plate's sides and what stands in it
constexpr int RESULT_COLUMN_GAP = 38;
constexpr int ROW_MARGIN = 12; // of the winner's tint around its row
constexpr PlateLook RESULT_PLATE{10.0F, {4, 6, 14, 190}, {150, 165, 195, 90}};
constexpr std::uint8_t TINT_ALPHA = 44;

enum Column : std::uint8_t { NameColumn, TotalColumn, BestColumn, GapColumn, NoteColumn };
constexpr std::size_t COLUMNS = NoteColumn + 1;
using Cells = std::array<std::string const*, COLUMNS>;

// Where the columns begin and how wide they are, from the middle of the screen. They are as wide as
// what they hold and stand as near to each other as can be told apart, all of them centred.
struct ResultColumns {
    std::array<int, COLUMNS> left{};
    std::array<int, COLUMNS> width{};
    int total = 0;
};

Cells cells_of(ResultRow const& row) {
    return {&row.name, &row.total, &row.best_lap, &row.gap, &row.note};
}

ResultColumns columns_of(Fonts const& fonts, ResultTable const& result) {
    constexpr std::array<char const*, COLUMNS> HEADS{"", texts::TOTAL, texts::BEST_LAP, texts::GAP,
                                                     ""};
    ResultColumns columns;
    for (std::size_t i = 0; i < COLUMNS; ++i) {
        int& width = columns.width.at(i);
        width = width_of(fonts, fonts.hud_label, HEADS.at(i));
        for (ResultRow const& row : result.rows) {
            width = std::max(width, width_of(fonts, fonts.hud_time, cells_of(row).at(i)->c_str()));
        }
        if (width == 0) continue;
        columns.left.at(i) = columns.total > 0 ? columns.total + RESULT_COLUMN_GAP : 0;
        columns.total = columns.left.at(i) + width;
    }
    for (int& left : columns.left) left -= columns.total / 2;
    return columns;
}

// What draws the pieces of the result.
struct Table {
    SDL_Renderer* renderer = nullptr;
    Fonts const& fonts;
    ResultColumns columns;
    int x = 0;
    int y = 0;
    std::uint8_t alpha = 0;

    [[nodiscard]] SDL_Color faded(SDL_Color color) const {
        color.a = static_cast<std::uint8_t>(color.a * alpha / 255);
        return color;
    }
    void left(TTF_Font* font, std::string const& text, int at, int down, SDL_Color color) const {
        draw_line(renderer, fonts, {font, text.c_str(), color, alpha}, x + at, y + down);
    }
    // Names and notes begin with their column, figures and their heads end with it.
    void cell(TTF_Font* font, std::string const& text, Column column, int down,
              SDL_Color color) const {
        bool const figures = column != NameColumn && column != NoteColumn;
        int const indent =
            figures ? columns.width.at(column) - width_of(fonts, font, text.c_str()) : 0;
        left(font, text, columns.left.at(column) + indent, down, color);
    }
    void centred(TTF_Font* font, std::string const& text, int down, SDL_Color color) const {
        left(font, text, -width_of(fonts, font, text.c_str()) / 2, down, color);
    }
    void bar(int half_width, int down, int h, SDL_Color color, float radius = 0.0F) const {
        draw_plate(renderer, {x - half_width, y + down, 2 * half_width, h},
                   {radius, faded(color), {}});
    }
};

void draw_row(Table const& table, ResultRow const& row, int down) {
    TTF_Font* const font = table.fonts.hud_time;
    int h = 0;
    int w = 0;
    measure_text(font, text_scale(table.fonts), "0", &w, &h);
    down += (ROW_H - h) / 2;
    table.cell(font, row.name, NameColumn, down, row.color);
    table.cell(font, row.total, TotalColumn, down, row.finished ? PLAIN : FAINT);
    table.cell(font, row.best_lap, BestColumn, down, PLAIN);
    table.cell(font, row.gap, GapColumn, down, row.finished ? PLAIN : TIME_LEFT);
    table.cell(font, row.note, NoteColumn, down, RECORD);
}

void draw_result_plate(Table const& table, int half_width) {
    draw_plate(
        table.renderer,
        {table.x - half_width, table.y + PLATE_TOP, 2 * half_width, PLATE_BOTTOM - PLATE_TOP},
        {RESULT_PLATE.radius, table.faded(RESULT_PLATE.glass), table.faded(RESULT_PLATE.rim)});
}

} // namespace

void render_countdown(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      ShownCars const& cars, char const* text, std::uint8_t alpha) {
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
                 ShownCars const& cars, char const* text, SDL_Color color, std::uint8_t alpha) {
    draw_centred(renderer, rect, fonts, {fonts.record, text, color, alpha},
                 clear_share(rect, fonts, fonts.record, text, cars, NAME_Y));
}

double warning_place(SDL_Rect const& rect, Fonts const& fonts, ShownCars const& cars,
                     char const* text) {
    return clear_share(rect, fonts, fonts.record, text, cars, WARNING_Y);
}

double time_left_place(SDL_Rect const& rect, Fonts const& fonts, ShownCars const& cars,
                       char const* text) {
    return clear_share(rect, fonts, fonts.record, text, cars, TIME_LEFT_Y);
}

void render_warning(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                    char const* text, double place) {
    draw_centred(renderer, rect, fonts, {fonts.record, text, WARNING, 255}, place);
}

void render_time_left(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      char const* text, double place) {
    draw_centred(renderer, rect, fonts, {fonts.record, text, TIME_LEFT, 255}, place);
}

void render_ghost_gap(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                      char const* text, bool ahead) {
    TTF_Font* const font = fonts.hud_time;
    int w = 0;
    int h = 0;
    if (!measure_text(font, text_scale(fonts), text, &w, &h)) return;
    // No wider than needed: it is blended into every frame. Figures of one width keep it still.
    int const plate_w = w + 2 * GAP_MARGIN;
    SDL_Rect const plate{rect.x + (rect.w - plate_w) / 2, rect.y + GAP_Y, plate_w, GAP_H};
    draw_plate(renderer, plate, GAP_PLATE);
    draw_ttf(renderer, font, text_scale(fonts), text, rect.x + (rect.w - w) / 2,
             plate.y + (GAP_H - h) / 2, ahead ? AHEAD : BEHIND, nullptr, nullptr, 255);
}

void render_result(SDL_Renderer* renderer, int width, int height, Fonts const& fonts,
                   ResultTable const& result, float fade) {
    auto const alpha =
        static_cast<std::uint8_t>(std::lround(std::clamp(fade, 0.0F, 1.0F) * 255.0F));
    Table const table{renderer, fonts, columns_of(fonts, result), width / 2, height / 2, alpha};
    if (alpha == 0) return;
    int const half_width =
        std::max(table.columns.total, width_of(fonts, fonts.record, result.title.c_str())) / 2;
    draw_result_plate(table, half_width + RESULT_MARGIN);
    table.centred(fonts.record, result.title, TITLE_Y, result.title_color);
    table.cell(fonts.hud_label, texts::TOTAL, TotalColumn, HEAD_Y, FAINT);
    table.cell(fonts.hud_label, texts::BEST_LAP, BestColumn, HEAD_Y, FAINT);
    // Without a gap its column says why.
    if (result.rows[1].finished) {
        table.cell(fonts.hud_label, texts::GAP, GapColumn, HEAD_Y, FAINT);
    }
    table.bar(half_width + ROW_MARGIN, LINE_Y, 1, {150, 165, 195, 120});
    SDL_Color tint = result.title_color;
    tint.a = TINT_ALPHA;
    table.bar(half_width + ROW_MARGIN, FIRST_ROW_Y, ROW_H, tint, 6.0F);
    draw_row(table, result.rows[0], FIRST_ROW_Y);
    draw_row(table, result.rows[1], FIRST_ROW_Y + ROW_H);
    table.centred(fonts.hud_time, texts::REMATCH, REMATCH_Y, PLAIN);
}
