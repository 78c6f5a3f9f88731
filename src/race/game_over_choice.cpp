#include "race/game_over_choice.h"

#include "race/game_loop.h"
#include "render/text.h"
#include "screens/menu_focus.h"

#include <array>

namespace {

// Before this A is not heard: who drives on to the end of the race still presses it.
constexpr std::uint32_t A_COUNTS_AFTER_MS = 1000;
constexpr int CENTRE_X = 640; // logical pixels
constexpr int TOP_Y = 668;
constexpr int GAP = 70; // between the two
constexpr SDL_Color PLAIN{220, 225, 235, 255};
constexpr SDL_Color CHOSEN{255, 220, 110, 255};
constexpr std::array<char const*, 2> WORDS{"Menu", "Race again"};

void go(GameLoop& g, bool rematch) {
    if (!rematch) return g.go_to_menu();
    g.restart_from_key();
}

} // namespace

void press_pad_at_game_over(GameLoop& g, PadButton button) {
    switch (button) {
    case PadButton::Left:
        g.rematch_focused = false;
        return;
    case PadButton::Right:
        g.rematch_focused = true;
        return;
    case PadButton::A:
        if (SDL_GetTicks() - g.sim.game_over_tick < A_COUNTS_AFTER_MS) return;
        return go(g, g.rematch_focused);
    case PadButton::Start:
        return go(g, false);
    case PadButton::Y:
        return go(g, true);
    default:
        return;
    }
}

void draw_game_over_choice(GameLoop& g, unsigned now) {
    if (!g.sim.game_over || !g.pads.in_use()) return;
    TTF_Font* const font = g.fonts.hud_time;
    double const scale = text_scale(g.fonts);
    std::array<int, 2> widths{};
    int h = 0;
    for (std::size_t i = 0; i < WORDS.size(); ++i) {
        measure_text(font, scale, WORDS[i], &widths[i], &h);
    }
    int x = CENTRE_X - (widths[0] + GAP + widths[1]) / 2;
    for (std::size_t i = 0; i < WORDS.size(); ++i) {
        bool const chosen = g.rematch_focused == (i == 1);
        draw_ttf(g.renderer, font, scale, WORDS[i], x, TOP_Y, chosen ? CHOSEN : PLAIN, nullptr,
                 nullptr, 255);
        if (chosen) draw_focus(g.renderer, {x - 4, TOP_Y, widths[i] + 8, h}, now);
        x += widths[i] + GAP;
    }
}
