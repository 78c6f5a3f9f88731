// The thumbnail row of a menu frame.

#include "screens/menu_drawing.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr int OUTLINE_WIDTH = 2; // logical pixels around a thumbnail
constexpr int NAME_GAP = 6;      // between a track's name and its picture
constexpr int BEST_GAP = 12;     // between a picture and the best lap under it
constexpr int BEST_LINE_GAP = 2;

// Lets a texture be drawn at an alpha of its own for a while.
class AlphaMod {
public:
    AlphaMod(SDL_Texture* texture, std::uint8_t alpha) : texture_(texture) {
        SDL_GetTextureAlphaMod(texture_, &before_);
        SDL_SetTextureAlphaMod(texture_, alpha);
    }
    ~AlphaMod() { SDL_SetTextureAlphaMod(texture_, before_); }
    AlphaMod(AlphaMod const&) = delete;
    AlphaMod& operator=(AlphaMod const&) = delete;

private:
    SDL_Texture* texture_;
    std::uint8_t before_ = 255;
};

// Centred on a thumbnail's column.
void draw_centred(SDL_Renderer* renderer, MenuLabel const& label, SDL_Rect const& column, int y,
                  SDL_Color colour) {
    if (!label.tex) return;
    AlphaMod const alpha(label.tex.get(), colour.a);
    draw_label(renderer, label, column.x + (column.w - label.w) / 2, y, colour);
}

void draw_thumb(SDL_Renderer* renderer, TrackThumb const& thumb, SDL_Rect const& rect,
                SDL_Color colour) {
    if (!thumb.tex) return;
    SDL_Rect const outline{rect.x - OUTLINE_WIDTH, rect.y - OUTLINE_WIDTH,
                           rect.w + 2 * OUTLINE_WIDTH, rect.h + 2 * OUTLINE_WIDTH};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, colour.r, colour.g, colour.b, colour.a);
    SDL_RenderDrawRect(renderer, &outline);
    AlphaMod const alpha(thumb.tex.get(), colour.a);
    SDL_RenderCopy(renderer, thumb.tex.get(), nullptr, &rect);
    draw_centred(renderer, thumb.name, rect, rect.y - NAME_GAP - thumb.name.h, colour);
}

void draw_best_lap(SDL_Renderer* renderer, TrackThumb const& thumb, SDL_Rect const& rect,
                   SDL_Color colour) {
    int y = rect.y + rect.h + BEST_GAP;
    for (MenuLabel const* line : {&thumb.holder, &thumb.time}) {
        if (!line->tex) continue;
        draw_centred(renderer, *line, rect, y, colour);
        y += line->h + BEST_LINE_GAP;
    }
}

SDL_Color gold_at(float alpha) {
    auto const level = static_cast<std::uint8_t>(std::clamp(alpha, 0.0F, 1.0F) * 255.0F);
    return {GOLD.r, GOLD.g, GOLD.b, level};
}

} // namespace

void draw_track_row(MenuFrame const& frame, TrackRow const& row, bool have_best) {
    std::vector<SDL_Rect> const rects = row_rects(row.thumbs, row.factors, frame.view);
    bool const at_rest = is_at_rest(row.factors);
    std::size_t const count = row.thumbs.size();
    for (std::size_t i = 0; i < count; ++i) {
        bool const chosen = static_cast<int>(i) == row.selected_row && at_rest;
        draw_thumb(frame.renderer, row.thumbs[i], rects[i], chosen ? GOLD : DIM);
    }
    bool const extra_shown = rects.size() > count;
    SDL_Color const extra_colour = gold_at(row.factors.extra_alpha);
    if (extra_shown) draw_thumb(frame.renderer, *row.factors.extra, rects.back(), extra_colour);
    if (!have_best) return;
    if (extra_shown) {
        draw_best_lap(frame.renderer, *row.factors.extra, rects.back(), extra_colour);
    } else if (row.selected_row >= 0 && row.selected_row < static_cast<int>(count)) {
        std::vector<SDL_Rect> base;
        track_row_layout(row.thumbs, frame.view, base);
        auto const chosen = static_cast<std::size_t>(row.selected_row);
        draw_best_lap(frame.renderer, row.thumbs[chosen], base[chosen], GOLD);
    }
}
