#include "screens/help_more.h"

#include "render/plate.h"
#include "screens/help_annotations.h"
#include "screens/help_keyboard.h"
#include "screens/help_shapes.h"
#include "screens/menu_switches.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

constexpr SDL_Color TITLE{235, 240, 255, 255};
constexpr SDL_Color TEXT{210, 210, 230, 255};
constexpr SDL_Color CAP_LETTERING{205, 220, 248, 255};
constexpr SDL_Color GOLD{255, 215, 80, 255};
constexpr SDL_Color FAINT{150, 165, 195, 255};
constexpr SDL_Color PANEL{12, 20, 50, 255};
constexpr SDL_Color PANEL_RIM{58, 78, 128, 255};
constexpr std::array<char const*, 4> CONTROL_WORDS{"turn left", "turn right", "accelerate",
                                                   "handbrake"};

// Measures of the page for a screen of 1280 x 720; larger ones have larger pages.
constexpr double PAGE_W = 1280.0;
constexpr double PAGE_H = 720.0;
constexpr SDL_Rect LEFT_PANEL{108, 36, 522, 556};
constexpr SDL_Rect RIGHT_PANEL{650, 36, 522, 556};
constexpr SDL_Rect FOOT_PANEL{108, 610, 1064, 44};
constexpr int PADDING = 22;
constexpr int TEXT_SIZE = 16;
constexpr int HEADING_SIZE = 22;
constexpr int HEADING_H = 40; // with its line
constexpr int ROW_H = 28;
constexpr int PART_GAP = 12; // over a heading
constexpr int CAP_H = 24;
constexpr int CAP_GAP = 6;
constexpr int BOX = 13; // of a switch
constexpr int PADS_TAB = 200;
constexpr int KEYS_TAB = 116;

// A page of help, and the fonts that write on it.
struct Sheet {
    SDL_Renderer* renderer;
    double scale;
    SDL_Point corner; // of the page, in pixels
    FontHandle text;
    FontHandle heading;

    [[nodiscard]] int px(int design) const { return static_cast<int>(std::lround(design * scale)); }
    [[nodiscard]] SDL_Rect place(SDL_Rect const& design) const {
        return {corner.x + px(design.x), corner.y + px(design.y), px(design.w), px(design.h)};
    }
};

// As wide as a page of 16:9 at most, and in the middle where the screen is of another shape.
Sheet open_sheet(SDL_Renderer* renderer, int ow, int oh) {
    double const scale = std::min(ow / PAGE_W, oh / PAGE_H);
    auto const font = [scale](int size) {
        return open_screen_font(
            {FONT_ROUNDED, FONT_SEMIBOLD},
            std::max(LEAST_FONT_SIZE, static_cast<int>(std::lround(size * scale))));
    };
    SDL_Point const corner{static_cast<int>((ow - scale * PAGE_W) / 2),
                           static_cast<int>((oh - scale * PAGE_H) / 2)};
    return {renderer, scale, corner, font(TEXT_SIZE), font(HEADING_SIZE)};
}

// Writes with the middle of the line at `y`, and returns where the text ends.
int write(Sheet const& sheet, FontHandle const& font, std::string const& text, int x, int y,
          SDL_Color color) {
    RenderedText const line = render_text(sheet.renderer, font.get(), text.c_str(), color);
    draw_page_text(sheet.renderer, line, x, y - line.h / 2);
    return x + line.w;
}

// How far a sign stands out of the middle of its line, in pixels down.
int off_the_middle(TTF_Font* font, char sign) {
    int low = 0;
    int high = 0;
    Uint16 const code = static_cast<unsigned char>(sign);
    if (TTF_GlyphMetrics(font, code, nullptr, nullptr, &low, &high, nullptr) != 0) return 0;
    return TTF_FontAscent(font) - (low + high) / 2 - TTF_FontHeight(font) / 2;
}

// As the buttons of most pads are told apart, muted to go with the page.
SDL_Color button_tint(std::string const& button) {
    if (button == "A") return {52, 104, 72, 255};
    if (button == "B") return {128, 58, 64, 255};
    return button == "X" ? SDL_Color{50, 84, 146, 255} : SDL_Color{122, 102, 46, 255};
}

// A key's name as the keyboard of the first page has it.
std::string page_key_name(SDL_Scancode key) {
    return key == SDL_SCANCODE_RETURN ? "Enter" : printed_key(key);
}

// A key or a button with its lettering, its left edge at `x`; returns its right edge.
int draw_cap(Sheet const& sheet, std::string const& text, int x, int y, bool round = false) {
    // Signs that are no more than a dot or a stroke are drawn larger.
    bool const sign = text.size() == 1 && std::ispunct(static_cast<unsigned char>(text[0])) != 0;
    FontHandle const& font = sign ? sheet.heading : sheet.text;
    RenderedText const label = render_text(sheet.renderer, font.get(), text.c_str(), CAP_LETTERING);
    int const h = sheet.px(CAP_H);
    int const w = round ? h : std::max(h, label.w + sheet.px(14));
    SDL_Rect const cap = draw_key_cap(sheet.renderer, {x, y - h / 2, w, h},
                                      std::max(1, sheet.px(1)), round ? h / 2 : sheet.px(5));
    if (round) fill_rrect(sheet.renderer, cap, cap.h / 2, button_tint(text));
    // A dot or a stroke at half its height over the line, or below it.
    int const down = sign && font ? off_the_middle(font.get(), text[0]) / 2 : 0;
    draw_page_text(sheet.renderer, label, cap.x + (cap.w - label.w) / 2,
                   cap.y + (cap.h - label.h) / 2 - down);
    return x + w;
}

// What fills a panel from its top down.
struct Pen {
    Sheet const& sheet;
    SDL_Rect panel; // in pixels
    int y;          // of the next row's middle
    int tab;        // from the panel's edge to its second column

    [[nodiscard]] int left() const { return panel.x + sheet.px(PADDING); }
    [[nodiscard]] int right() const { return panel.x + panel.w - sheet.px(PADDING); }
    [[nodiscard]] int second() const { return panel.x + tab; }
    void next(int design_h) { y += sheet.px(design_h); }
};

Pen open_panel(Sheet const& sheet, SDL_Rect const& design, int tab) {
    SDL_Rect const panel = sheet.place(design);
    draw_plate(sheet.renderer, panel, {static_cast<float>(sheet.px(12)), PANEL, PANEL_RIM});
    return {sheet, panel, panel.y + sheet.px(ROW_H), sheet.px(tab)};
}

void heading(Pen& pen, char const* text, SDL_Color color = TITLE) {
    write(pen.sheet, pen.sheet.heading, text, pen.left(), pen.y, color);
    SDL_Rect const line{pen.left(), pen.y + pen.sheet.px(17), pen.right() - pen.left(),
                        std::max(1, pen.sheet.px(1))};
    SDL_SetRenderDrawColor(pen.sheet.renderer, PANEL_RIM.r, PANEL_RIM.g, PANEL_RIM.b, PANEL_RIM.a);
    SDL_RenderFillRect(pen.sheet.renderer, &line);
    pen.next(HEADING_H);
}

void note(Pen& pen, std::string const& text) {
    write(pen.sheet, pen.sheet.text, text, pen.left(), pen.y, FAINT);
    pen.next(ROW_H);
}

// Buttons and axes of a pad: what is one letter is round.
void pad_row(Pen& pen, std::initializer_list<char const*> buttons, char const* text) {
    int x = pen.left();
    for (std::string const button : buttons) {
        x = draw_cap(pen.sheet, button, x, pen.y, button.size() == 1) + pen.sheet.px(CAP_GAP);
    }
    write(pen.sheet, pen.sheet.text, text, pen.second(), pen.y, TEXT);
    pen.next(ROW_H);
}

void pad_name_row(Pen& pen, char const* color, std::string const& pad, SDL_Color tint) {
    write(pen.sheet, pen.sheet.text, color, pen.left(), pen.y, tint);
    write(pen.sheet, pen.sheet.text, pad.empty() ? "no pad" : pad, pen.second(), pen.y,
          pad.empty() ? FAINT : TEXT);
    pen.next(ROW_H);
}

void write_pads(Pen& pen, HelpFacts const& facts) {
    heading(pen, "Pads");
    pad_row(pen, {"left stick", "D-pad"}, "turn");
    pad_row(pen, {"right trigger", "A"}, "accelerate (release to brake)");
    pad_row(pen, {"left trigger", "X"}, "handbrake");
    pad_row(pen, {"Y"}, "Quick Restart");
    pad_row(pen, {"Start"}, "Return to Menu");
    pad_row(pen, {"Back"}, "a lone pad to the other player");
    note(pen, "The first pad drives red, the second blue.");
    pad_name_row(pen, "red", facts.pads[0], RED_TINT);
    pad_name_row(pen, "blue", facts.pads[1], BLUE_TINT);
    pen.next(PART_GAP);
    heading(pen, "Pads on the menu");
    pad_row(pen, {"A"}, "choose; a chosen track again: start");
    pad_row(pen, {"Start"}, "start racing");
    pad_row(pen, {"X"}, "full screen");
    pad_row(pen, {"Y"}, "this help");
    pad_row(pen, {"Back"}, "two pads change sides");
    pad_row(pen, {"B", "B"}, "leave the game");
}

void switch_row(Pen& pen, SDL_Scancode key, char const* text, bool on) {
    Sheet const& sheet = pen.sheet;
    SDL_Color const color = on ? GOLD : FAINT;
    draw_cap(sheet, printed_key(key), pen.left(), pen.y);
    int const side = sheet.px(BOX);
    SDL_Rect const frame{pen.second(), pen.y - side / 2, side, side};
    int const line = std::max(1, sheet.px(1));
    SDL_SetRenderDrawColor(sheet.renderer, color.r, color.g, color.b, 255);
    SDL_RenderFillRect(sheet.renderer, &frame);
    SDL_Rect const inside = inner_rect(frame, line);
    SDL_SetRenderDrawColor(sheet.renderer, PANEL.r, PANEL.g, PANEL.b, 255);
    SDL_RenderFillRect(sheet.renderer, &inside);
    SDL_Rect const core = inner_rect(frame, 3 * line);
    SDL_SetRenderDrawColor(sheet.renderer, color.r, color.g, color.b, 255);
    if (on) SDL_RenderFillRect(sheet.renderer, &core);
    write(sheet, sheet.text, text, frame.x + side + sheet.px(10), pen.y, on ? GOLD : TEXT);
    pen.next(ROW_H);
}

void write_switches(Pen& pen, HelpFacts const& facts) {
    heading(pen, "Switches on the menu");
    constexpr std::array<char const*, ALL_SWITCHES.size()> WORDS{
        "bumps", "rumble", "computer drives red", "computer drives blue"};
    std::array<bool, ALL_SWITCHES.size()> const on{facts.switches.bumps, facts.rumble,
                                                   facts.switches.computer_red,
                                                   facts.switches.computer_blue};
    for (std::size_t i = 0; i < WORDS.size(); ++i) {
        switch_row(pen, SWITCH_KEYS.at(i), WORDS.at(i), on.at(i));
    }
    note(pen, "With bumps or the computer no records are kept.");
    pen.next(PART_GAP);
}

// As many keys as the panel has room for.
void keys_row(Pen& pen, char const* control, std::vector<SDL_Scancode> const& keys) {
    write(pen.sheet, pen.sheet.text, control, pen.left(), pen.y, TEXT);
    int x = pen.second();
    for (SDL_Scancode const key : keys) {
        std::string const label = page_key_name(key);
        int w = 0;
        TTF_SizeUTF8(pen.sheet.text.get(), label.c_str(), &w, nullptr);
        if (x + w + pen.sheet.px(14) > pen.right()) break;
        x = draw_cap(pen.sheet, label, x, pen.y) + pen.sheet.px(CAP_GAP);
    }
    pen.next(ROW_H);
}

void write_keys(Pen& pen, HelpFacts const& facts) {
    constexpr std::array<char const*, 2> NAMES{"Keys of Player 1", "Keys of Player 2"};
    constexpr std::array<SDL_Color, 2> TINTS{RED_TINT, BLUE_TINT};
    for (std::size_t player : {0U, 1U}) {
        heading(pen, NAMES.at(player), TINTS.at(player));
        for (std::size_t i = 0; i < CONTROL_WORDS.size(); ++i) {
            keys_row(pen, CONTROL_WORDS.at(i), facts.keys[player][i]);
        }
        pen.next(PART_GAP);
    }
}

void write_own_keys(Pen& pen) {
    Sheet const& sheet = pen.sheet;
    int const blank = sheet.px(CAP_GAP);
    int x = write(sheet, sheet.text,
                  "Keys of your own: a section of input.conf beside the game, [red] or [blue], "
                  "with lines like",
                  pen.left(), pen.y, FAINT);
    x = draw_cap(sheet, "left = A, Left", x + blank, pen.y);
    write(sheet, sheet.text, "and right, accelerate, brake.", x + blank, pen.y, FAINT);
}

} // namespace

void draw_help_more(SDL_Renderer* renderer, int ow, int oh, HelpFacts const& facts) {
    Sheet const sheet = open_sheet(renderer, ow, oh);
    Pen pads = open_panel(sheet, LEFT_PANEL, PADS_TAB);
    write_pads(pads, facts);
    Pen keys = open_panel(sheet, RIGHT_PANEL, KEYS_TAB);
    write_switches(keys, facts);
    write_keys(keys, facts);
    Pen foot = open_panel(sheet, FOOT_PANEL, 0);
    foot.y = foot.panel.y + foot.panel.h / 2;
    write_own_keys(foot);
    draw_page_turn(renderer, ow, oh, 2);
}

void draw_page_turn(SDL_Renderer* renderer, int ow, int oh, int number) {
    Sheet const sheet = open_sheet(renderer, ow, oh);
    bool const forth = number == 1;
    RenderedText const text = render_text(renderer, sheet.text.get(),
                                          forth ? "pads, switches, keys" : "the keyboard", FAINT);
    int const side = sheet.px(CAP_H);
    int const gap = sheet.px(10);
    int const margin = sheet.px(22);
    int const y = oh - margin - side;
    int const x = forth ? ow - margin - side : margin;
    SDL_Rect const cap =
        draw_key_cap(renderer, {x, y, side, side}, std::max(1, sheet.px(1)), sheet.px(5));
    draw_key_arrow(renderer, forth ? "<RIGHT>" : "<LEFT>", cap);
    draw_page_text(renderer, text, forth ? x - gap - text.w : x + side + gap,
                   y + (side - text.h) / 2);
}
