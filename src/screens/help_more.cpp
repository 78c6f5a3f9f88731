#include "screens/help_more.h"

#include "screens/help_annotations.h"
#include "screens/help_shapes.h"
#include "screens/menu_switches.h"

#include <algorithm>
#include <vector>

namespace {

constexpr SDL_Color TITLE{235, 240, 255, 255};
constexpr SDL_Color TEXT{210, 210, 230, 255};
constexpr SDL_Color KEY{255, 215, 80, 255};
constexpr SDL_Color FAINT{150, 165, 195, 255};
constexpr std::array<char const*, 4> CONTROL_WORDS{"turn left", "turn right", "accelerate",
                                                   "handbrake"};

// What writes a column of the page: the place moves down with each line.
struct Pen {
    SDL_Renderer* renderer;
    TTF_Font* font;
    int x;
    int y;
    int line_h;
    int tab; // from the column's edge to what stands behind a key
};

void write(Pen const& pen, std::string const& text, int x, SDL_Color color) {
    draw_page_text(pen.renderer, render_text(pen.renderer, pen.font, text.c_str(), color), x,
                   pen.y);
}

void title(Pen& pen, char const* text, SDL_Color color = TITLE) {
    write(pen, text, pen.x, color);
    pen.y += pen.line_h * 3 / 2;
}

void row(Pen& pen, std::string const& key, std::string const& text, SDL_Color color = KEY) {
    write(pen, key, pen.x, color);
    write(pen, text, pen.x + pen.tab, TEXT);
    pen.y += pen.line_h;
}

void note(Pen& pen, std::string const& text) {
    write(pen, text, pen.x, FAINT);
    pen.y += pen.line_h;
}

void gap(Pen& pen) {
    pen.y += pen.line_h / 2;
}

void write_pads(Pen& pen, HelpFacts const& facts) {
    title(pen, "Pads");
    row(pen, "left stick, D-pad", "turn");
    row(pen, "right trigger, A", "accelerate (release to brake)");
    row(pen, "left trigger, X", "handbrake");
    row(pen, "Y", "Quick Restart");
    row(pen, "Start", "Return to Menu");
    row(pen, "Back", "a lone pad to the other player");
    gap(pen);
    note(pen, "The first pad drives red, the second blue.");
    row(pen, "red", facts.pads[0].empty() ? "no pad" : facts.pads[0], RED_TINT);
    row(pen, "blue", facts.pads[1].empty() ? "no pad" : facts.pads[1], BLUE_TINT);
    gap(pen);
    title(pen, "Pads on the menu");
    row(pen, "A", "choose; a chosen track again: start");
    row(pen, "Start", "start racing");
    row(pen, "X", "full screen");
    row(pen, "Y", "this help");
    row(pen, "Back", "two pads change sides");
    row(pen, "B twice", "leave the game");
}

void write_switches(Pen& pen, HelpFacts const& facts) {
    title(pen, "Switches on the menu");
    auto const state = [](std::string const& what, bool on) {
        return what + (on ? ": on" : ": off");
    };
    std::array<std::string, ALL_SWITCHES.size()> const words{
        state("bumps", facts.switches.bumps), state("rumble", facts.rumble),
        state("computer drives red", facts.switches.computer_red),
        state("computer drives blue", facts.switches.computer_blue)};
    for (std::size_t i = 0; i < words.size(); ++i) row(pen, printed_key(SWITCH_KEYS[i]), words[i]);
    note(pen, "With bumps or the computer no records are kept.");
}

std::string listed(std::vector<SDL_Scancode> const& keys) {
    std::string list;
    for (SDL_Scancode const key : keys) list += (list.empty() ? "" : "   ") + printed_key(key);
    return list;
}

void write_keys(Pen& pen, HelpFacts const& facts) {
    constexpr std::array<char const*, 2> NAMES{"Keys of Player 1", "Keys of Player 2"};
    constexpr std::array<SDL_Color, 2> TINTS{RED_TINT, BLUE_TINT};
    for (std::size_t player : {0U, 1U}) {
        gap(pen);
        title(pen, NAMES.at(player), TINTS.at(player));
        for (std::size_t i = 0; i < CONTROL_WORDS.size(); ++i) {
            row(pen, CONTROL_WORDS.at(i), listed(facts.keys[player][i]), TITLE);
        }
    }
    gap(pen);
    note(pen, "Keys of your own: a section of input.conf beside the game,");
    note(pen, "[red] or [blue], with lines like  left = A, Left  and");
    note(pen, "right, accelerate, brake.");
}

int share(double part, int whole) {
    return static_cast<int>(part * whole);
}

} // namespace

void draw_help_more(SDL_Renderer* renderer, int ow, int oh, HelpFacts const& facts) {
    // As wide as a page of 16:9 at most, and by its height where the page is wider.
    int const w = std::min(ow, oh * 16 / 9);
    int const size = std::max(LEAST_FONT_SIZE, share(0.0135, w));
    FontHandle const font = open_screen_font({FONT_ROUNDED, FONT_SEMIBOLD}, size);
    int const line_h = share(1.5, size);
    int const left = (ow - w) / 2;
    Pen pads{renderer, font.get(), left + share(0.09, w), share(0.12, oh), line_h, share(0.15, w)};
    write_pads(pads, facts);
    Pen keys{renderer, font.get(), left + share(0.55, w), share(0.12, oh), line_h, share(0.1, w)};
    write_switches(keys, facts);
    write_keys(keys, facts);
    draw_page_turn(renderer, ow, oh, 2);
}

void draw_page_turn(SDL_Renderer* renderer, int ow, int oh, int number) {
    FontHandle const font = open_screen_font({FONT_ROUNDED, FONT_SEMIBOLD},
                                             std::max(LEAST_FONT_SIZE, share(0.022, oh)));
    char const* words = number == 1 ? "Right: pads, switches, keys  »" : "«  Left: the keyboard";
    RenderedText const text = render_text(renderer, font.get(), words, FAINT);
    int const margin = share(0.03, oh);
    draw_page_text(renderer, text, number == 1 ? ow - margin - text.w : margin,
                   oh - margin - text.h);
}
