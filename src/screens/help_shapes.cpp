#include "screens/help_shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// How far row `j` of a rounded rectangle of height `h` stands in from its sides.
int corner_inset(int j, int h, int r) {
    bool const in_top = j < r;
    bool const in_bottom = j >= h - r;
    if (!in_top && !in_bottom) return 0;
    int const d = in_top ? r - 1 - j : j - (h - r);
    return r - static_cast<int>(std::lround(std::sqrt(r * r - d * d)));
}

// Widens the span to where the edge from `a` to `b` crosses row `y`, if it does. Horizontal edges
// add nothing: their ends belong to the other two edges.
void add_crossing(SDL_Point a, SDL_Point b, int y, double& least, double& greatest) {
    if (a.y == b.y || y < std::min(a.y, b.y) || y > std::max(a.y, b.y)) return;
    double const x = a.x + static_cast<double>(y - a.y) * (b.x - a.x) / (b.y - a.y);
    least = std::min(least, x);
    greatest = std::max(greatest, x);
}

void set_color(SDL_Renderer* renderer, SDL_Color color) {
    SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, color.a);
}

} // namespace

void fill_rrect(SDL_Renderer* renderer, SDL_Rect const& rect, int radius, SDL_Color color) {
    if (SDL_RectEmpty(&rect)) return;
    int const r = std::clamp(radius, 0, std::min(rect.w, rect.h) / 2);
    set_color(renderer, color);
    for (int j = 0; j < rect.h; ++j) {
        int const inset = corner_inset(j, rect.h, r);
        SDL_RenderDrawLine(renderer, rect.x + inset, rect.y + j, rect.x + rect.w - 1 - inset,
                           rect.y + j);
    }
}

void fill_triangle(SDL_Renderer* renderer, SDL_Point a, SDL_Point b, SDL_Point c, SDL_Color color) {
    set_color(renderer, color);
    auto const [top, bottom] = std::minmax({a.y, b.y, c.y});
    for (int y = top; y <= bottom; ++y) {
        double least = std::numeric_limits<double>::max();
        double greatest = std::numeric_limits<double>::lowest();
        add_crossing(a, b, y, least, greatest);
        add_crossing(b, c, y, least, greatest);
        add_crossing(c, a, y, least, greatest);
        if (least > greatest) continue;
        SDL_RenderDrawLine(renderer, static_cast<int>(std::lround(least)), y,
                           static_cast<int>(std::lround(greatest)), y);
    }
}

void draw_page_text(SDL_Renderer* renderer, RenderedText const& text, int x, int y) {
    if (!text.tex) return;
    SDL_Rect const place{x, y, text.w, text.h};
    SDL_RenderCopy(renderer, text.tex.get(), nullptr, &place);
}
