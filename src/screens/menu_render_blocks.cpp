// The mode block, the name rows and the start button of a menu frame.

#include "screens/menu_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {

constexpr SDL_Color FIELD_TEXT{235, 240, 255, 255};
constexpr SDL_Color CARET{190, 90, 255, 255};
constexpr unsigned BLINK_MS = 500;
constexpr float HOVER_MS = 50.0F;       // from rest to full hover
constexpr float START_FADE_MS = 500.0F; // the button's first appearance
constexpr unsigned PRESS_MS = 180;      // the dip after a press

// The label with its left edge at x, centred on the row.
void draw_on_row(SDL_Renderer* renderer, MenuLabel const& label, int x, int centre_y,
                 SDL_Color colour) {
    draw_label(renderer, label, x, centre_y - label.h / 2, colour);
}

void draw_laps(MenuFrame const& frame, GameMode const& mode) {
    std::array<SDL_Rect, LAP_COUNTS.size()> options{};
    SDL_Rect const caption = laps_row(mode, frame.view, options.data());
    draw_label(frame.renderer, mode.laps_caption, caption.x, caption.y, DIM);
    for (std::size_t i = 0; i < options.size(); ++i) {
        bool const chosen = static_cast<int>(i) == mode.lap_index;
        draw_label(frame.renderer, mode.lap_options[i], options[i].x, options[i].y,
                   chosen ? GOLD : DIM);
    }
}

// A point of the view in output pixels: the logical surface is centred in the output.
SDL_Point to_output(MenuFrame const& frame, int x, int y) {
    int w = 0;
    int h = 0;
    SDL_GetRendererOutputSize(frame.renderer, &w, &h);
    double const k = std::min(static_cast<double>(h) / frame.H, static_cast<double>(w) / frame.W);
    return {static_cast<int>(std::lround(x * k + (w - frame.W * k) * 0.5)),
            static_cast<int>(std::lround(y * k + (h - frame.H * k) * 0.5))};
}

void draw_caret(SDL_Renderer* renderer, NameField const& field, SDL_Point at) {
    int const h = std::max(field.h, 1);
    int const w = field.h < 24 ? 2 : h / 8;
    SDL_Rect const bar{at.x + field.caret_x, at.y - h / 2, w, h};
    SDL_SetRenderDrawColor(renderer, CARET.r, CARET.g, CARET.b, CARET.a);
    SDL_RenderFillRect(renderer, &bar);
}

// In output pixels, in which the field's text was rendered.
void draw_field(MenuFrame const& frame, NameField const& field, int row, bool caret) {
    SDL_Point const at = to_output(frame, place_x(frame.view, NAMES_X), row_y(frame.view, row));
    SDL_RenderSetLogicalSize(frame.renderer, 0, 0);
    if (field.tex && field.w >= 1) {
        SDL_Rect const target{at.x, at.y - field.h / 2, field.w, field.h};
        SDL_SetTextureColorMod(field.tex.get(), FIELD_TEXT.r, FIELD_TEXT.g, FIELD_TEXT.b);
        SDL_RenderCopy(frame.renderer, field.tex.get(), nullptr, &target);
    }
    if (caret) draw_caret(frame.renderer, field, at);
    SDL_RenderSetLogicalSize(frame.renderer, frame.W, frame.H);
}

// Moves the hover level a frame's worth towards what the cursor points at.
void advance_hover(StartButton& button, bool pointed_at, unsigned now) {
    float const target = pointed_at ? 1.0F : 0.0F;
    float const step =
        button.last_tick == 0 ? 0.0F : static_cast<float>(now - button.last_tick) / HOVER_MS;
    button.hover += std::clamp(target - button.hover, -step, step);
    button.last_tick = now;
}

float start_alpha(StartButton& button, bool track_chosen, unsigned now) {
    if (track_chosen && button.shown_at == 0) button.shown_at = now;
    if (button.shown_at == 0) return 0.0F;
    return 255.0F * std::min(1.0F, static_cast<float>(now - button.shown_at) / START_FADE_MS);
}

double start_size_factor(StartButton const& button, unsigned now) {
    double const swollen = 1.0 + static_cast<double>(button.hover) * 0.08;
    unsigned const since_press = now - button.pressed_at;
    if (button.pressed_at == 0 || since_press >= PRESS_MS) return swollen;
    return swollen *
           (1.0 - std::sin(static_cast<double>(since_press) / PRESS_MS * std::numbers::pi) * 0.1);
}

int scaled(int size, double factor) {
    return std::max(1, static_cast<int>(std::lround(size * factor)));
}

} // namespace

void draw_mode_block(MenuFrame const& frame, GameMode const& mode) {
    ModeBlock const block = mode_block(mode, frame.view);
    for (int row : {MODE_PRACTICE, MODE_RACE}) {
        bool const chosen = mode.selected == row;
        int const y = row_y(frame.view, row);
        draw_on_row(frame.renderer, row == MODE_PRACTICE ? mode.practice : mode.race, block.label_x,
                    y, chosen ? GOLD : DIM);
        if (chosen) draw_on_row(frame.renderer, mode.arrow, block.x, y, GOLD);
    }
    if (mode.selected == MODE_RACE) draw_laps(frame, mode);
}

void draw_name_rows(MenuFrame const& frame, PlayerNames const& names) {
    for (int row : {0, 1}) {
        draw_on_row(frame.renderer, name_label(names, row), name_label_x(names, frame.view, row),
                    row_y(frame.view, row), row == 0 ? RED_NAME : BLUE_NAME);
        bool const caret = names.focus == row && (frame.now - names.blink_at) / BLINK_MS % 2 == 0;
        auto const player = static_cast<std::size_t>(row);
        if (names.driven[player] && names.focus != row) {
            draw_on_row(frame.renderer, names.computer, place_x(frame.view, NAMES_X),
                        row_y(frame.view, row), DIM);
        } else {
            draw_field(frame, names.fields[player], row, caret);
        }
    }
}

void draw_start_button(MenuFrame const& frame, StartButton& button, MenuCursor const& cursor,
                       bool track_chosen) {
    if (!button.tex) return;
    SDL_Rect const rest = start_button_box(button, frame.view);
    bool const pointed_at =
        track_chosen && cursor_shows(cursor, frame.now) && inside(rest, cursor.x, cursor.y);
    advance_hover(button, pointed_at, frame.now);
    float const alpha = start_alpha(button, track_chosen, frame.now);
    double const factor = start_size_factor(button, frame.now);
    int const w = scaled(rest.w, factor);
    int const h = scaled(rest.h, factor);
    SDL_Rect const target{rest.x + (rest.w - w) / 2, rest.y + (rest.h - h) / 2, w, h};
    SDL_SetTextureAlphaMod(button.tex.get(),
                           static_cast<std::uint8_t>(std::min(std::lround(alpha), 255L)));
    SDL_RenderCopy(frame.renderer, button.tex.get(), nullptr, &target);
}
