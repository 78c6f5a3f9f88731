#include "screens/help_page.h"
#include "screens/help_shapes.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr SDL_Color HINT_COLOR{210, 210, 230, 255};

// Asterisks turn bold on and off.
constexpr std::string_view HINT =
    "Use *accelerate* to increase speed; release it to *brake*. Higher speed means wider turns. "
    "Tap *handbrake* while turning to induce a drift to get around corners. Drifting is slower "
    "than driving with grip, so steer into the skid to stop it early.";

struct Word {
    std::string text;
    bool bold = false;
};

// A word takes the state in force at its first character.
std::vector<Word> split_words(std::string_view text) {
    std::vector<Word> words;
    Word word;
    bool bold = false;
    for (char const c : text) {
        if (c == '*') {
            bold = !bold;
        } else if (c == ' ') {
            words.push_back(std::move(word));
            word = {};
        } else {
            if (word.text.empty()) word.bold = bold;
            word.text += c;
        }
    }
    words.push_back(std::move(word));
    return words;
}

std::vector<RenderedText> render_words(SDL_Renderer* renderer, TTF_Font* font) {
    std::vector<RenderedText> rendered;
    for (Word const& word : split_words(HINT)) {
        TTF_SetFontStyle(font, word.bold ? TTF_STYLE_BOLD : TTF_STYLE_NORMAL);
        rendered.push_back(render_text(renderer, font, word.text.c_str(), HINT_COLOR));
    }
    return rendered;
}

// Words [first, end) with blanks between them.
struct Line {
    std::size_t first;
    std::size_t end;
    int width;
};

// As many words from `first` on as fit, and never less than one.
Line take_line(std::vector<RenderedText> const& words, std::size_t first, int blank, int limit) {
    Line line{first, first + 1, words[first].w};
    while (line.end < words.size() && line.width + blank + words[line.end].w <= limit) {
        line.width += blank + words[line.end].w;
        ++line.end;
    }
    return line;
}

} // namespace

void draw_driving_hint(SDL_Renderer* renderer, int ow, int oh, int keyboard_w) {
    int const size = static_cast<int>(0.018 * oh);
    FontHandle const font = open_screen_font({FONT_SEMIBOLD, FONT_MONO}, std::max(6, size));
    if (!font) return;
    int blank = 0;
    TTF_SizeUTF8(font.get(), " ", &blank, nullptr);
    std::vector<RenderedText> const words = render_words(renderer, font.get());
    int const limit = static_cast<int>(keyboard_w * 0.9);
    int y = static_cast<int>(0.85 * oh);
    for (std::size_t first = 0; first < words.size();) {
        Line const line = take_line(words, first, blank, limit);
        int x = ow / 2 - line.width / 2;
        for (std::size_t i = line.first; i < line.end; ++i) {
            draw_page_text(renderer, words[i], x, y);
            x += words[i].w + blank;
        }
        y += static_cast<int>(size * 1.4);
        first = line.end;
    }
}
