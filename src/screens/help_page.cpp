#include "screens/help_page.h"

#include "screens/help_annotations.h"
#include "screens/help_keyboard.h"
#include "screens/help_more.h"
#include "screens/help_own_keys.h"
#include "screens/help_shapes.h"
#include "screens/keyboard_layout.h"

#include <algorithm>
#include <cmath>

namespace {

// Measures of a page, in pixels.
struct Page {
    int ow;
    int oh;
    SDL_Rect keyboard;
    double unit;
    int inset;
    int radius;
    int thick;
};

int share(double part, double whole) {
    return static_cast<int>(part * whole);
}

// Ten twelfths of the width, unless that takes more than about a third of the height.
SDL_Rect keyboard_rect(int ow, int oh) {
    int mx = ow / 12;
    int kw = ow - 2 * mx;
    int kh = static_cast<int>(std::lround(kw * KEYBOARD_H / KEYBOARD_W));
    int const highest = share(0.34, oh);
    if (kh > highest) {
        kh = highest;
        kw = static_cast<int>(std::lround(kh * KEYBOARD_W / KEYBOARD_H));
        mx = (ow - kw) / 2;
    }
    return {mx, share(0.4, oh) - kh / 2, kw, kh};
}

Page measure(int ow, int oh) {
    SDL_Rect const keyboard = keyboard_rect(ow, oh);
    double const unit = std::max(keyboard.w / KEYBOARD_W, 8.0);
    return {ow,
            oh,
            keyboard,
            unit,
            std::max(2, share(0.0625, unit)),
            std::max(3, share(0.125, unit)),
            std::max(1, share(0.0011, oh))};
}

void draw_annotations(SDL_Renderer* renderer, Page const& page, KeyBindings const& keys) {
    FontHandle const handle = open_screen_font({FONT_ROUNDED, FONT_SEMIBOLD},
                                               std::max(LEAST_FONT_SIZE, share(0.022, page.oh)));
    TTF_Font* const font = handle.get();
    int const line_h = font != nullptr ? TTF_FontHeight(font) : share(0.026, page.oh);
    auto const player_group = [&](auto const& annos, bool text_left, int anchor) {
        draw_anno_group(renderer, page.keyboard, page.unit, page.inset, page.radius, page.thick,
                        font, line_h, annos.data(), static_cast<int>(annos.size()), text_left,
                        anchor);
    };
    auto const race_group = [&](auto const& annos) {
        draw_major_group(renderer, page.keyboard, page.unit, page.inset, page.radius, page.thick,
                         font, line_h, annos.data(), static_cast<int>(annos.size()));
    };
    int const mx = page.keyboard.x;
    PlayerAnnos const players = player_annos(keys);
    bool const own = keys[0] != builtin_keys()[0];
    player_group(players[0], true,
                 own ? mx + share(static_cast<double>(OWN_RED_ANCHOR), page.unit)
                     : mx + share(0.96, page.unit) + 4 * page.inset);
    player_group(players[1], false, mx + share(23.0, page.unit));
    player_group(players[2], false, mx + share(15.0, page.unit));
    race_group(ANNOS_MAJOR);
    race_group(ANNOS_MINOR);
}

void draw_player_labels(SDL_Renderer* renderer, Page const& page) {
    FontHandle const font = open_screen_font({FONT_SEMIBOLD, FONT_MONO},
                                             std::max(LEAST_FONT_SIZE, share(0.034, page.oh)));
    int const y = share(0.75, page.oh);
    draw_player_label(renderer, font.get(), page.keyboard.x + share(2.32, page.unit), y, "Player 1",
                      RED_TINT, 1);
    draw_player_label(renderer, font.get(), page.keyboard.x + share(20.33, page.unit), y,
                      "Player 2", BLUE_TINT, 0);
}

} // namespace

void draw_player_label(SDL_Renderer* renderer, TTF_Font* font, int x, int y, char const* text,
                       SDL_Color color, int right) {
    RenderedText const label = render_text(renderer, font, text, {255, 255, 255, 255});
    if (!label.tex) return;
    SDL_Texture* const texture = label.tex.get();
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
    int const x0 = right != 0 ? x - label.w : x - label.w / 2;
    auto const copy = [&](SDL_Color tint, int offset) {
        SDL_SetTextureColorMod(texture, tint.r, tint.g, tint.b);
        SDL_SetTextureAlphaMod(texture, tint.a);
        draw_page_text(renderer, label, x0 + offset, y + offset);
    };
    copy({0, 0, 0, 130}, label.h < 36 ? 1 : label.h / 18);
    copy({255, 255, 255, 70}, -1);
    copy({color.r, color.g, color.b, 255}, 0);
}

void draw_help_page(SDL_Renderer* renderer, int ow, int oh, HelpFacts const& facts) {
    Page const page = measure(ow, oh);
    draw_keyboard(renderer, page.keyboard);
    draw_annotations(renderer, page, facts.keys);
    draw_player_labels(renderer, page);
    draw_driving_hint(renderer, ow, oh, page.keyboard.w);
    draw_page_turn(renderer, ow, oh, 1);
}
