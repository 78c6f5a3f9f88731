#include "track_compiler/stencil.h"

#include "track_compiler/geometry.h"

#include <array>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace {

struct Glyph {
    char letter = ' ';
    std::array<std::string_view, 7> rows;
};

// clang-format off
constexpr std::array<Glyph, 38> GLYPHS{{
    {'A', {" ### ", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"}},
    {'B', {"#### ", "#   #", "#   #", "#### ", "#   #", "#   #", "#### "}},
    {'C', {" ####", "#    ", "#    ", "#    ", "#    ", "#    ", " ####"}},
    {'D', {"#### ", "#   #", "#   #", "#   #", "#   #", "#   #", "#### "}},
    {'E', {"#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#####"}},
    {'F', {"#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#    "}},
    {'G', {" ####", "#    ", "#    ", "#  ##", "#   #", "#   #", " ####"}},
    {'H', {"#   #", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"}},
    {'I', {" ### ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'J', {"  ###", "   # ", "   # ", "   # ", "   # ", "#  # ", " ##  "}},
    {'K', {"#   #", "#  # ", "# #  ", "##   ", "# #  ", "#  # ", "#   #"}},
    {'L', {"#    ", "#    ", "#    ", "#    ", "#    ", "#    ", "#####"}},
    {'M', {"#   #", "## ##", "# # #", "# # #", "#   #", "#   #", "#   #"}},
    {'N', {"#   #", "##  #", "# # #", "# # #", "#  ##", "#   #", "#   #"}},
    {'O', {" ### ", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'P', {"#### ", "#   #", "#   #", "#### ", "#    ", "#    ", "#    "}},
    {'Q', {" ### ", "#   #", "#   #", "#   #", "# # #", "#  # ", " ## #"}},
    {'R', {"#### ", "#   #", "#   #", "#### ", "# #  ", "#  # ", "#   #"}},
    {'S', {" ####", "#    ", "#    ", " ### ", "    #", "    #", "#### "}},
    {'T', {"#####", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  "}},
    {'U', {"#   #", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'V', {"#   #", "#   #", "#   #", "#   #", "#   #", " # # ", "  #  "}},
    {'W', {"#   #", "#   #", "#   #", "# # #", "# # #", "## ##", "#   #"}},
    {'X', {"#   #", "#   #", " # # ", "  #  ", " # # ", "#   #", "#   #"}},
    {'Y', {"#   #", "#   #", " # # ", "  #  ", "  #  ", "  #  ", "  #  "}},
    {'Z', {"#####", "    #", "   # ", "  #  ", " #   ", "#    ", "#####"}},
    {'0', {" ### ", "#   #", "#  ##", "# # #", "##  #", "#   #", " ### "}},
    {'1', {"  #  ", " ##  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'2', {" ### ", "#   #", "    #", "   # ", "  #  ", " #   ", "#####"}},
    {'3', {"#### ", "    #", "    #", " ### ", "    #", "    #", "#### "}},
    {'4', {"   # ", "  ## ", " # # ", "#  # ", "#####", "   # ", "   # "}},
    {'5', {"#####", "#    ", "#### ", "    #", "    #", "#   #", " ### "}},
    {'6', {" ### ", "#    ", "#    ", "#### ", "#   #", "#   #", " ### "}},
    {'7', {"#####", "    #", "   # ", "  #  ", "  #  ", "  #  ", "  #  "}},
    {'8', {" ### ", "#   #", "#   #", " ### ", "#   #", "#   #", " ### "}},
    {'9', {" ### ", "#   #", "#   #", " ####", "    #", "    #", " ### "}},
    {'-', {"     ", "     ", "     ", "#####", "     ", "     ", "     "}},
    {'!', {"  #  ", "  #  ", "  #  ", "  #  ", "  #  ", "     ", "  #  "}},
}};
// clang-format on

// Is a square of the stencil's grid open? 7 squares high, 6 for every letter.
bool is_open(std::string const& text, int column, int row) {
    if (column < 0 || row < 0 || row >= 7) return false;
    auto const at = static_cast<std::size_t>(column);
    if (at / 6 >= text.size() || at % 6 == 5) return false; // every letter has a blank behind it
    int const letter = std::toupper(static_cast<unsigned char>(text[at / 6]));
    for (Glyph const& glyph : GLYPHS) {
        if (glyph.letter == letter) return glyph.rows[static_cast<std::size_t>(row)][at % 6] == '#';
    }
    return false;
}

} // namespace

// Between the squares' middles the grid is taken as a slope and cut below half its height, which
// rounds the corners off and makes straight lines of diagonals.
double stencil_coverage(std::string const& text, double x, double y, double pixel) {
    double const u = 7.0 * x - 0.5;
    double const v = 7.0 * y - 0.5;
    int const column = static_cast<int>(std::floor(u));
    int const row = static_cast<int>(std::floor(v));
    auto const open = [&](int dx, int dy) {
        return is_open(text, column + dx, row + dy) ? 1.0 : 0.0;
    };
    double const upper = std::lerp(open(0, 0), open(1, 0), u - column);
    double const lower = std::lerp(open(0, 1), open(1, 1), u - column);
    double const height = std::lerp(upper, lower, v - row);
    double const soft = std::min(0.4, 3.5 * pixel); // half a pixel in squares
    return smoothstep(0.42 - soft, 0.42 + soft, height);
}
