#include "screens/help_keyboard.h"

#include "input/key_bindings.h"
#include "screens/help_shapes.h"
#include "screens/keyboard_layout.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <string_view>

namespace {

constexpr SDL_Color KEYBOARD_BODY{16, 26, 56, 255};
constexpr SDL_Color CAP{46, 64, 108, 255};
constexpr SDL_Color LETTERING{205, 220, 248, 255};

// Labels are measured at this size, and the size that fits follows by proportion.
constexpr int MEASURING_SIZE = 100;
// Share of a unit: the height of lettering, and what stays free between it and the cap's edges.
constexpr double LETTER_HEIGHT = 0.46;
constexpr double CAP_MARGIN = 0.16;

// The code point at byte `at`, which moves behind it.
Uint32 code_point(std::string const& text, std::size_t& at) {
    auto const byte = [&] { return static_cast<unsigned char>(text[at++]); };
    Uint32 const lead = byte();
    int const more = lead < 0x80U ? 0 : lead < 0xE0U ? 1 : lead < 0xF0U ? 2 : 3;
    Uint32 point = more == 0 ? lead : lead & (0x3FU >> more);
    for (int i = 0; i < more && at < text.size(); ++i) point = point << 6U | (byte() & 0x3FU);
    return point;
}

// The key fonts of one drawing, opened as sizes are needed.
class KeyFonts {
public:
    TTF_Font* at(int size) {
        auto const [place, is_new] = fonts_.try_emplace(size);
        if (is_new) place->second = open_screen_font({FONT_SEMIBOLD, FONT_MONO}, size);
        return place->second.get();
    }

    // Whether the font has all the signs of a text.
    bool has(std::string const& text) {
        TTF_Font* const font = at(MEASURING_SIZE);
        for (std::size_t i = 0; font != nullptr && i < text.size();) {
            Uint32 const point = code_point(text, i);
            if (TTF_GlyphIsProvided32(font, point) == 0) return false;
        }
        return true;
    }

private:
    std::map<int, FontHandle> fonts_;
};

// Measures of a keyboard, in pixels.
struct Measures {
    SDL_Rect rect;
    double unit;
    int gap;    // between a key's cell and its body
    int bevel;  // between its body and its cap
    int corner; // of the body
};

Measures measure(SDL_Rect const& rect) {
    double const unit = std::max(rect.w / KEYBOARD_W, 8.0);
    return {rect, unit, std::max(2, static_cast<int>(0.0625 * unit)),
            std::max(2, static_cast<int>(unit / 22)), std::max(3, static_cast<int>(0.125 * unit))};
}

// The font size at which a label fits an area of iw x ih pixels.
int fit(KeyFonts& fonts, double unit, char const* label, int iw, int ih) {
    TTF_Font* const font = fonts.at(MEASURING_SIZE);
    int tw = 0;
    int th = 0;
    if (font == nullptr || TTF_SizeUTF8(font, label, &tw, &th) != 0 || tw <= 0 || th <= 0) {
        return static_cast<int>(std::lround(LETTER_HEIGHT * unit));
    }
    double const by_key = LETTER_HEIGHT * unit * MEASURING_SIZE / th;
    double const by_width = (iw - CAP_MARGIN * unit) * MEASURING_SIZE / tw;
    double const by_height = (ih - CAP_MARGIN * unit) * MEASURING_SIZE / th;
    auto const size = std::lround(std::min({by_key, by_width, by_height}));
    return std::max(LEAST_FONT_SIZE, static_cast<int>(size));
}

// Sizes that keys of a kind share.
struct SharedSizes {
    int navigation;
    int function;
    int wide;
};

template <class Group>
int least_fit(KeyFonts& fonts, double unit, Group const& group, int iw, int ih) {
    int least = fit(fonts, unit, group.front(), iw, ih);
    for (char const* label : group) least = std::min(least, fit(fonts, unit, label, iw, ih));
    return least;
}

SharedSizes shared_sizes(KeyFonts& fonts, Measures const& m) {
    auto const inner_width = [&m](double units) {
        return static_cast<int>(units * m.unit) - 2 * m.gap - 2 * m.bevel;
    };
    int const iw = inner_width(1.0);
    int const ih = iw - m.bevel;
    return {least_fit(fonts, m.unit, NAV_GROUP, iw, ih), least_fit(fonts, m.unit, FN_GROUP, iw, ih),
            fit(fonts, m.unit, "Menu", inner_width(1.25), ih)};
}

template <class Group>
bool contains(Group const& group, std::string_view label) {
    return std::find(group.begin(), group.end(), label) != group.end();
}

int label_size(KeyFonts& fonts, Measures const& m, SharedSizes const& shared, char const* label,
               SDL_Rect const& cap) {
    if (contains(NAV_GROUP, label)) return std::max(LEAST_FONT_SIZE, shared.navigation);
    if (contains(FN_GROUP, label)) return std::max(LEAST_FONT_SIZE, shared.function);
    if (contains(WIDE_GROUP, label)) return std::max(LEAST_FONT_SIZE, shared.wide);
    return fit(fonts, m.unit, label, cap.w, cap.h);
}

SDL_Point center_of(SDL_Rect const& rect) {
    return {rect.x + rect.w / 2, rect.y + rect.h / 2};
}

void draw_label(SDL_Renderer* renderer, KeyFonts& fonts, char const* label, int size,
                SDL_Rect const& cap) {
    RenderedText const text = render_text(renderer, fonts.at(size), label, LETTERING);
    draw_page_text(renderer, text, cap.x + (cap.w - text.w) / 2, cap.y + (cap.h - text.h) / 2);
}

// What this player's keyboard bears on a key. A US keyboard bears the labels; so does, for want of
// better, a key whose sign the font lacks.
std::string printed_label(KeyFonts& fonts, KbKey const& key) {
    std::string_view const label = key.label;
    bool const bears_a_sign =
        label.size() == 1 && key.x < KEYPAD_X && !(label[0] >= '0' && label[0] <= '9');
    if (!bears_a_sign) return key.label;
    std::string const printed = printed_key(scancode_of(key));
    if (printed == "`") return key.label; // beside its other sign
    return fonts.has(printed) ? printed : key.label;
}

} // namespace

SDL_Rect draw_key_cap(SDL_Renderer* renderer, SDL_Rect const& body, int bevel, int corner) {
    SDL_Rect const cap{body.x + bevel, body.y + bevel, body.w - 2 * bevel, body.h - 3 * bevel};
    fill_rrect(renderer, body, corner, KEYBOARD_BODY);
    fill_rrect(renderer, cap, std::max(2, corner - bevel), CAP);
    return cap;
}

void draw_key_arrow(SDL_Renderer* renderer, std::string_view label, SDL_Rect const& cap) {
    int const shorter = std::min(cap.w, cap.h);
    int const s = shorter < 20 ? 3 : shorter / 5;
    int const dx = label == "<LEFT>" ? -s : label == "<RIGHT>" ? s : 0;
    int const dy = label == "<UP>" ? -s : label == "<DOWN>" ? s : 0;
    auto const [cx, cy] = center_of(cap);
    // The tip points along (dx, dy); the base lies on the far side of the square.
    fill_triangle(renderer, {cx + dx, cy + dy}, {cx - dx - dy, cy - dy - dx},
                  {cx - dx + dy, cy - dy + dx}, LETTERING);
}

void draw_keyboard(SDL_Renderer* renderer, SDL_Rect const& rect) {
    Measures const m = measure(rect);
    KeyFonts fonts;
    SharedSizes const shared = shared_sizes(fonts, m);
    for (KbKey const& key : KB_KEYS) {
        SDL_Rect const body = inner_rect(key_cell(key, m.rect, m.unit), m.gap);
        SDL_Rect const cap = draw_key_cap(renderer, body, m.bevel, m.corner);
        std::string_view const label = key.label;
        if (label.empty()) continue;
        if (label.front() == '<') {
            draw_key_arrow(renderer, label, cap);
        } else {
            std::string const printed = printed_label(fonts, key);
            draw_label(renderer, fonts, printed.c_str(),
                       label_size(fonts, m, shared, printed.c_str(), cap), cap);
        }
    }
}
