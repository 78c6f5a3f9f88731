// letter_cutter FONT OUT.cpp: writes the outlines of a font's capitals, figures and signs as C++,
// so that the track compiler can paint them on the ground without having the font at hand. Exit
// status 1 if the font cannot be read or the file not be written; 2 for a wrong call.

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace {

// Curves become chains of this many straight lines: enough for letters of 400 pixels.
constexpr int CHORDS = 8;

// Takes FreeType's calls for one glyph and writes them as lists of points, in heights of a capital,
// y growing downwards from its top.
struct Cutter {
    std::ostringstream out;
    double height = 1.0; // of a capital, in the font's units
    FT_Vector at{};
    bool open = false;

    void put(double x, double y) { out << '{' << x / height << ',' << 1.0 - y / height << "},"; }
    void close() {
        if (open) out << "},";
        open = false;
    }
};

Cutter& cutter_of(void* user) {
    return *static_cast<Cutter*>(user);
}

int move_to(FT_Vector const* to, void* user) {
    Cutter& cutter = cutter_of(user);
    cutter.close();
    cutter.out << '{';
    cutter.open = true;
    cutter.at = *to;
    return 0;
}

int line_to(FT_Vector const* to, void* user) {
    Cutter& cutter = cutter_of(user);
    cutter.at = *to;
    cutter.put(static_cast<double>(to->x), static_cast<double>(to->y));
    return 0;
}

int cubic_to(FT_Vector const* a, FT_Vector const* b, FT_Vector const* to, void* user) {
    Cutter& cutter = cutter_of(user);
    for (int i = 1; i <= CHORDS; ++i) {
        double const t = static_cast<double>(i) / CHORDS;
        double const s = 1.0 - t;
        auto const blend = [&](FT_Pos p, FT_Pos q, FT_Pos r, FT_Pos e) {
            return s * s * s * static_cast<double>(p) + 3.0 * s * s * t * static_cast<double>(q) +
                   3.0 * s * t * t * static_cast<double>(r) + t * t * t * static_cast<double>(e);
        };
        cutter.put(blend(cutter.at.x, a->x, b->x, to->x), blend(cutter.at.y, a->y, b->y, to->y));
    }
    cutter.at = *to;
    return 0;
}

// A curve with one handle is a cubic whose handles lie two thirds of the way towards it.
int conic_to(FT_Vector const* handle, FT_Vector const* to, void* user) {
    FT_Vector const from = cutter_of(user).at;
    auto const third = [](FT_Pos end, FT_Pos middle) { return (end + 2 * middle) / 3; };
    FT_Vector const a{third(from.x, handle->x), third(from.y, handle->y)};
    FT_Vector const b{third(to->x, handle->x), third(to->y, handle->y)};
    return cubic_to(&a, &b, to, user);
}

bool load(FT_Face face, char letter) {
    return FT_Load_Char(face, static_cast<FT_ULong>(letter), FT_LOAD_NO_SCALE) == 0;
}

bool cut_letters(FT_Face face, std::ostream& out) {
    if (!load(face, 'H')) return false;
    Cutter cutter;
    cutter.height = static_cast<double>(face->glyph->metrics.height);
    FT_Outline_Funcs const calls{move_to, line_to, conic_to, cubic_to, 0, 0};
    for (char letter = ' '; letter <= '`'; ++letter) {
        if (!load(face, letter)) return false;
        cutter.out << "{" << static_cast<int>(letter) << ','
                   << static_cast<double>(face->glyph->metrics.horiAdvance) / cutter.height << ",{";
        if (FT_Outline_Decompose(&face->glyph->outline, &calls, &cutter) != 0) return false;
        cutter.close();
        cutter.out << "}},\n";
    }
    out << cutter.out.str();
    return true;
}

bool cut(char const* font, char const* target) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) != 0 || FT_New_Face(library, font, 0, &face) != 0) {
        std::fprintf(stderr, "letter_cutter: %s cannot be read\n", font);
        return false;
    }
    std::ofstream out(target);
    out << "// Made by letter_cutter from " << face->family_name << ' ' << face->style_name
        << ".\n// NOLINTBEGIN\n#include \"track_compiler/stencil_letters.h\"\n"
           "std::vector<StencilLetter> const& stencil_letters() {\n"
           "static std::vector<StencilLetter> const letters = {\n";
    bool const cut = cut_letters(face, out);
    out << "};\nreturn letters;\n}\n// NOLINTEND\n";
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    out.close();
    if (!cut || !out) std::fprintf(stderr, "letter_cutter: %s: no outlines\n", target);
    return cut && out;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: letter_cutter FONT OUT.cpp\n");
        return 2;
    }
    return cut(argv[1], argv[2]) ? 0 : 1;
}
