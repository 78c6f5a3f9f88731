#include "screens/help_annotations.h"

#include "screens/help_shapes.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr SDL_Color MAJOR_TINT{235, 240, 255, 255};
constexpr SDL_Color MINOR_TINT{90, 96, 111, 255};
constexpr std::uint8_t LEADER_ALPHA = 153;
constexpr std::uint8_t PLAYER_KEY_ALPHA = 128;
constexpr std::uint8_t RACE_KEY_ALPHA = 110;
// Lines of a player's caption stand closer than the font asks.
constexpr double CAPTION_LINE_STEP = 0.78;

// What all annotations of a page are drawn with.
struct AnnotationPen {
    SDL_Renderer* renderer;
    SDL_Rect rect;
    double unit;
    int inset;
    int radius;
    int thick;
    TTF_Font* font;
    int line_h;
};

SDL_Color tint_of(Anno const& anno) {
    if (anno.tint == TINT_MAJOR) return MAJOR_TINT;
    if (anno.tint == TINT_MINOR) return MINOR_TINT;
    return anno.player == 1 ? RED_TINT : BLUE_TINT;
}

SDL_Color with_alpha(SDL_Color color, std::uint8_t alpha) {
    return {color.r, color.g, color.b, alpha};
}

void draw_highlight(AnnotationPen const& pen, SDL_Rect const& cell, SDL_Color tint,
                    std::uint8_t alpha) {
    fill_rrect(pen.renderer, inner_rect(cell, pen.inset), pen.radius, with_alpha(tint, alpha));
}

// Where the leader leaves the key.
int lead_x(SDL_Rect const& cell, Anno const& anno) {
    return cell.x + static_cast<int>((0.5F + anno.lead) * static_cast<float>(cell.w));
}

// A slanted line is made thick by copies of it on both axes.
void draw_leader(AnnotationPen const& pen, SDL_Point from, SDL_Point to, SDL_Color tint) {
    SDL_SetRenderDrawColor(pen.renderer, tint.r, tint.g, tint.b, LEADER_ALPHA);
    for (int o = -(pen.thick / 2); o < pen.thick - pen.thick / 2; ++o) {
        SDL_RenderDrawLine(pen.renderer, from.x + o, from.y, to.x + o, to.y);
        SDL_RenderDrawLine(pen.renderer, from.x, from.y + o, to.x, to.y + o);
    }
}

std::vector<std::string> split_lines(std::string const& text) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t end = 0; end != std::string::npos; from = end + 1) {
        end = text.find('\n', from);
        lines.push_back(text.substr(from, end == std::string::npos ? end : end - from));
    }
    return lines;
}

// The end of a player's leader: straight down and across from the key to the anchor's column.
SDL_Point player_leader_end(SDL_Rect const& cell, int ax, int anchor) {
    return {anchor, cell.y + cell.h / 2 + std::abs(ax - anchor)};
}

// Where a player's leader starts, on its line back from the end.
SDL_Point player_leader_start(SDL_Rect const& cell, int ax, SDL_Point end) {
    int const to_lead = std::abs(ax - end.x);
    int const to_center = std::abs(cell.x + cell.w / 2 - end.x);
    int const p = static_cast<int>(std::lround((to_lead + to_center) / 2.0));
    return {ax < end.x ? end.x - p : end.x + p, end.y - p};
}

// The first line stands beside the end of the leader; the others are centred under it, save those
// in brackets, which keep its left edge.
void draw_player_caption(AnnotationPen const& pen, Anno const& anno, SDL_Point end,
                         bool text_left) {
    SDL_Color const tint = tint_of(anno);
    int y = end.y - pen.line_h / 2;
    int first_x = 0;
    int first_w = 0;
    bool first = true;
    for (std::string const& line : split_lines(anno.text)) {
        RenderedText const text = render_text(pen.renderer, pen.font, line.c_str(), tint);
        if (first) {
            first_x = text_left ? end.x - 4 * pen.inset - text.w : end.x + 4 * pen.inset;
            first_w = text.w;
        }
        bool const at_left_edge = first || line.starts_with('[');
        draw_page_text(pen.renderer, text,
                       at_left_edge ? first_x : first_x + (first_w - text.w) / 2, y);
        y += static_cast<int>(pen.line_h * CAPTION_LINE_STEP);
        first = false;
    }
}

void draw_player_anno(AnnotationPen const& pen, Anno const& anno, bool text_left, int anchor) {
    KbKey const* const key = find_key(anno);
    if (key == nullptr) return;
    SDL_Rect const cell = key_cell(*key, pen.rect, pen.unit);
    draw_highlight(pen, cell, tint_of(anno), PLAYER_KEY_ALPHA);
    if (*anno.text == '\0') return;
    int const ax = lead_x(cell, anno);
    SDL_Point const end = player_leader_end(cell, ax, anchor);
    draw_leader(pen, player_leader_start(cell, ax, end), end, tint_of(anno));
    draw_player_caption(pen, anno, end, text_left);
}

// The two ends of a race key's leader.
struct Leader {
    SDL_Point start;
    SDL_Point end;
};

Leader race_leader(AnnotationPen const& pen, SDL_Rect const& cell, Anno const& anno) {
    int const sx = anno.dir == 1 || anno.dir == 3 ? 1 : -1;
    int const sy = anno.dir == 0 || anno.dir == 1 ? -1 : 1;
    int const reach = static_cast<int>(static_cast<double>(anno.stem) * pen.unit);
    SDL_Point const end{lead_x(cell, anno) + sx * reach, cell.y + cell.h / 2 + sy * reach};
    int const to_middle = cell.x + cell.w / 2 - end.x;
    double const q = (sx * to_middle - reach) / 2.0;
    return {{end.x + static_cast<int>(std::lround(sx * q)),
             end.y + static_cast<int>(std::lround(sy * q))},
            end};
}

void draw_race_caption(AnnotationPen const& pen, Anno const& anno, SDL_Point end) {
    std::vector<std::string> const lines = split_lines(anno.text);
    int const total = pen.line_h * static_cast<int>(lines.size());
    int const gap = 2 * pen.inset;
    int y = end.y - total / 2;
    if (anno.align == 2) y = end.y - gap - total;
    if (anno.align == 3) y = end.y + gap;
    for (std::string const& line : lines) {
        RenderedText const text = render_text(pen.renderer, pen.font, line.c_str(), tint_of(anno));
        int x = end.x - text.w / 2;
        if (anno.align == 0) x = end.x + gap;
        if (anno.align == 1) x = end.x - gap - text.w;
        draw_page_text(pen.renderer, text, x, y);
        y += pen.line_h;
    }
}

void draw_race_anno(AnnotationPen const& pen, Anno const& anno) {
    KbKey const* const key = find_key(anno);
    if (key == nullptr) return;
    SDL_Rect const cell = key_cell(*key, pen.rect, pen.unit);
    draw_highlight(pen, cell, tint_of(anno), RACE_KEY_ALPHA);
    if (*anno.text == '\0') return;
    Leader const leader = race_leader(pen, cell, anno);
    draw_leader(pen, leader.start, leader.end, tint_of(anno));
    draw_race_caption(pen, anno, leader.end);
}

} // namespace

void draw_anno_group(SDL_Renderer* renderer, SDL_Rect const& rect, double unit, int inset,
                     int radius, int thick, TTF_Font* font, int line_h, Anno const* annos,
                     int count, bool text_left, int anchor) {
    AnnotationPen const pen{renderer, rect, unit, inset, radius, thick, font, line_h};
    for (int i = 0; i < count; ++i) draw_player_anno(pen, annos[i], text_left, anchor);
}

void draw_major_group(SDL_Renderer* renderer, SDL_Rect const& rect, double unit, int inset,
                      int radius, int thick, TTF_Font* font, int line_h, Anno const* annos,
                      int count) {
    AnnotationPen const pen{renderer, rect, unit, inset, radius, thick, font, line_h};
    for (int i = 0; i < count; ++i) draw_race_anno(pen, annos[i]);
}
