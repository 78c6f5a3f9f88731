#include "track_compiler/stencil.h"

#include "track_compiler/stencil_letters.h"

#include <cctype>
#include <cmath>
#include <cstddef>

namespace {

constexpr double TRACKING = 0.07;    // between letters, beyond what the font gives
constexpr double HALF_BRIDGE = 0.04; // of the bars that the stencil's insides hang on

StencilLetter const& letter_of(char text) {
    int const capital = std::toupper(static_cast<unsigned char>(text));
    int const last = static_cast<int>(stencil_letters().size()) - 1;
    int const number = capital - ' ';
    return stencil_letters()[static_cast<std::size_t>(number < 0 || number > last ? 0 : number)];
}

struct Outline {
    double gap = 1e9; // squared distance to the nearest line
    int turns = 0;    // how often the outlines run round the place
};

void measure(std::vector<Point> const& outline, Point at, Outline& found) {
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        Point const a = outline[j];
        Point const leg = outline[i] - a;
        Point const offset = at - a;
        double const t = std::clamp(dot(offset, leg) / std::max(dot(leg, leg), 1e-12), 0.0, 1.0);
        Point const gap = offset - t * leg;
        found.gap = std::min(found.gap, dot(gap, gap));
        bool const from_above = a.y <= at.y;
        if (from_above == (outline[i].y <= at.y)) continue;
        if (from_above == (cross(leg, offset) > 0.0)) found.turns += from_above ? 1 : -1;
    }
}

// The middle of what a letter encloses, or a place far off if it encloses nothing.
double bridge_of(StencilLetter const& letter) {
    if (letter.outlines.size() < 2 || !std::isalnum(static_cast<unsigned char>(letter.letter))) {
        return 1e9;
    }
    auto const inner = std::min_element(
        letter.outlines.begin(), letter.outlines.end(), [](auto const& a, auto const& b) {
            auto const span = [](std::vector<Point> const& outline) {
                auto const [low, high] = std::minmax_element(
                    outline.begin(), outline.end(), [](Point p, Point q) { return p.x < q.x; });
                return high->x - low->x;
            };
            return span(a) < span(b);
        });
    auto const [low, high] = std::minmax_element(inner->begin(), inner->end(),
                                                 [](Point p, Point q) { return p.x < q.x; });
    return (low->x + high->x) / 2.0;
}

double letter_outside(StencilLetter const& letter, Point at) {
    Outline found;
    for (std::vector<Point> const& outline : letter.outlines) measure(outline, at, found);
    double const outside = std::sqrt(found.gap) * (found.turns != 0 ? -1.0 : 1.0);
    return std::max(outside, HALF_BRIDGE - std::fabs(at.x - bridge_of(letter)));
}

} // namespace

double stencil_width(std::string_view text) {
    double width = 0.0;
    for (char const letter : text) width += letter_of(letter).advance + TRACKING;
    return std::max(0.0, width - TRACKING);
}

double stencil_outside(std::string_view text, Point at) {
    double left = 0.0;
    for (char const letter : text) {
        StencilLetter const& found = letter_of(letter);
        double const next = left + found.advance + TRACKING;
        if (at.x < next) return letter_outside(found, {at.x - left, at.y});
        left = next;
    }
    return 1e9;
}
