#include "tools/courses.h"

#include "track_compiler/course_parser.h"

#include <gtest/gtest.h>

std::string small_course() {
    return "name   \"Small Course\"\n" // 1
           "theme  plain\n"
           "size   800 500\n"
           "width  60\n"
           "radius 90\n" // 5
           "kerbs  4 150\n"
           "goal   400 60 400 140  # upright\n"
           "start  418 100\n"
           "point  100 100\n"
           "point  700 100\n" // 10
           "point  700 400 width 80\n"
           "point  100 400\n"
           "pine   400 250 30\n";
}

std::string replaced(std::string text, std::string const& what, std::string const& with) {
    std::size_t const at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

Theme plain_theme() {
    constexpr Colour RED{0.8F, 0.1F, 0.1F};
    constexpr Colour GREEN{0.1F, 0.8F, 0.1F};
    constexpr Colour BLUE{0.1F, 0.1F, 0.8F};
    Theme theme;
    theme.road = theme.road_worn = theme.road_edge = theme.line = RED;
    theme.rim_light = theme.rim_dark = BLUE;
    theme.ground_light = theme.ground_dark = theme.verge = GREEN;
    theme.leaf_light = theme.leaf_dark = theme.woods = GREEN;
    theme.kerb_red = {0.8F, 0.8F, 0.1F};
    theme.kerb_white = {0.8F, 0.1F, 0.8F};
    theme.grain = theme.road_grain = theme.shadow = 0.0;
    return theme;
}

std::optional<CompiledCourse> compile_text(std::string const& text, Faults& faults) {
    std::optional<Course> course = parse_course(text, faults);
    if (!course) return std::nullopt;
    return compile_course(*std::move(course), plain_theme(), GRID_REACH, faults);
}
