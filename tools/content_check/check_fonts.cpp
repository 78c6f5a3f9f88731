#include "base/sdl_handles.h"
#include "content_check/checks.h"
#include "content_check/report.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

struct WantedFont {
    char const* file;
    bool menu_marks; // the menu's rows also write the arrow and the dash
    bool figures;    // writes a running clock, which must not jump about
};

constexpr std::array<WantedFont, 7> WANTED_FONTS{{
    {"art/fonts/Montserrat-Black.otf", false, false},
    {"art/fonts/LiberationMono-Bold.ttf", false, true},
    {"art/fonts/RocketBrush-DYwyW.otf", false, false},
    {"art/fonts/StarJediOutline-y0xm.ttf", false, false},
    {"art/fonts/Quango-xlVR.otf", true, false},
    {"art/fonts/Montserrat-SemiBoldItalic.otf", false, false},
    {"art/fonts/Montserrat-SemiBold.otf", false, false},
}};

// Letters that players' names bring along.
constexpr std::u16string_view NAME_LETTERS = u"éèñøüßåçÄÖÉ";

int missing_glyphs(TTF_Font* font, bool menu_marks) {
    int missing = 0;
    for (std::uint16_t letter = ' '; letter <= '~'; ++letter) {
        missing += TTF_GlyphIsProvided(font, letter) == 0 ? 1 : 0;
    }
    for (std::uint16_t const letter : NAME_LETTERS) {
        missing += TTF_GlyphIsProvided(font, letter) == 0 ? 1 : 0;
    }
    if (menu_marks) {
        for (std::uint16_t const mark : {u'»', u'—'}) {
            missing += TTF_GlyphIsProvided(font, mark) == 0 ? 1 : 0;
        }
    }
    return missing;
}

int advance(TTF_Font* font, char letter) {
    int width = 0;
    TTF_GlyphMetrics(font, static_cast<std::uint16_t>(letter), nullptr, nullptr, nullptr, nullptr,
                     &width);
    return width;
}

bool figures_of_one_width(TTF_Font* font) {
    return std::ranges::all_of(std::string_view("0123456789"), [&](char figure) {
        return advance(font, figure) == advance(font, '0');
    });
}

} // namespace

void check_fonts(Report& report) {
    for (WantedFont const& wanted : WANTED_FONTS) {
        FontHandle const font(TTF_OpenFont(wanted.file, 20));
        if (!font) {
            report.add(false, wanted.file, TTF_GetError());
            continue;
        }
        int const missing = missing_glyphs(font.get(), wanted.menu_marks);
        char const* family = TTF_FontFaceFamilyName(font.get());
        // A face with a huge line height would push the menu's rows apart.
        bool const low = TTF_FontHeight(font.get()) <= 31;
        bool const steady = !wanted.figures || figures_of_one_width(font.get());
        report.add(missing == 0 && low && steady, wanted.file,
                   std::string(family != nullptr ? family : "?") + ", " + std::to_string(missing) +
                       " glyphs missing" + (steady ? "" : ", figures of many widths"));
    }
}
