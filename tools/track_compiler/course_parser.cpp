#include "track_compiler/course_parser.h"

#include "track_compiler/data_file.h"
#include "track_compiler/scenery_words.h"
#include "world/track.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <string_view>
#include <utility>

namespace {

constexpr int MAX_SIDE = 4096; // cells: the picture has two pixels a cell and 8192 at most
constexpr int MAX_SCATTER = 20000;

constexpr std::array<std::pair<std::string_view, GroundKind>, 8> GROUNDS{{
    {"water", GroundKind::water},
    {"sand", GroundKind::sand},
    {"gravel", GroundKind::gravel},
    {"field", GroundKind::field},
    {"plaza", GroundKind::plaza},
    {"ice", GroundKind::ice},
    {"woods", GroundKind::woods},
    {"rocks", GroundKind::rocks},
}};

constexpr std::array<std::pair<std::string_view, LaneKind>, 4> LANES{{
    {"track", LaneKind::track},
    {"paved", LaneKind::paved},
    {"rails", LaneKind::rails},
    {"stream", LaneKind::stream},
}};

// One statement under reading: takes words off its front and notes what is wrong with them.
struct Reader {
    DataLine const& data;
    Faults& faults;
    std::size_t next = 1;
    bool good = true;

    void complain(std::string_view cause) {
        if (good) {
            faults.push_back({data.number, std::string(data.words[0]).append(": ").append(cause)});
        }
        good = false;
    }
    [[nodiscard]] bool at_end() const { return next >= data.words.size(); }

    // `part` ends the value's name: one of a point's two numbers.
    std::string_view word(std::string_view what, std::string_view part = {}) {
        if (!at_end()) return data.words[next++];
        complain("the " + std::string(what).append(part) + " is missing");
        return {};
    }
    double number(std::string_view what, double low, double high, std::string_view part = {}) {
        std::string_view const text = word(what, part);
        if (!good) return low;
        std::optional<double> const value = parse_number(text);
        if (!value) {
            complain("the " + std::string(what).append(part) + " " + in_quotes(text) +
                     " is not a number");
        } else if (*value < low || *value > high) {
            complain("the " + std::string(what).append(part) + " must lie between " +
                     std::to_string(std::lround(low)) + " and " +
                     std::to_string(std::lround(high)));
        }
        return std::clamp(value.value_or(low), low, high);
    }
    Point point(std::string_view what) {
        double const x = number(what, -MAX_SIDE, 2 * MAX_SIDE, "'s x");
        double const y = number(what, -MAX_SIDE, 2 * MAX_SIDE, "'s y");
        return {x, y};
    }
    double degrees(std::string_view what) {
        return number(what, -360.0, 360.0) * std::numbers::pi / 180.0;
    }
    void finish() {
        if (!at_end()) complain(in_quotes(data.words[next]) + " is one value too many");
    }
};

void read_size(Reader& in, Course& course) {
    course.width = static_cast<int>(in.number("width", 321, MAX_SIDE));
    course.height = static_cast<int>(in.number("height", 321, MAX_SIDE));
}

void read_kerbs(Reader& in, Course& course) {
    course.kerb_depth = in.number("depth", 1, KERB_REACH);
    course.kerb_radius = in.number("corner radius", 1, 10000);
}

void read_start(Reader& in, Course& course) {
    if (course.start_line != 0) in.complain("a course has one start");
    course.start = in.point("start");
    course.start_line = in.data.number;
}

void read_goal(Reader& in, Course& course) {
    if (course.goal_line != 0) in.complain("a course has one goal line");
    course.goal_a = in.point("first end");
    course.goal_b = in.point("second end");
    course.goal_line = in.data.number;
}

void read_point(Reader& in, Course& course) {
    CoursePoint point;
    point.at = in.point("point");
    point.width = course.road_width;
    point.radius = course.corner_radius;
    point.line = in.data.number;
    while (in.good && !in.at_end()) {
        std::string_view const option = in.word("option");
        if (option == "width") {
            point.width = in.number("width", 40, 240);
        } else if (option == "radius") {
            point.radius = in.number("radius", 30, 4000);
            point.radius_given = true;
        } else if (option == "plain") {
            point.plain = true;
        } else {
            in.complain(in_quotes(option) + " is none of width, radius, plain");
        }
    }
    course.points.push_back(point);
}

void read_item(Reader& in, Course& course) {
    KindWord const& kind = *find_kind(in.data.words[0]);
    SceneryItem item{.kind = kind.kind, .at = in.point("place"), .line = in.data.number};
    if (kind.round) {
        item.length = item.width = in.number("size", 2, 400);
    } else {
        item.length = in.number("length", 2, 1200);
        item.width = in.number("width", 2, 600);
        item.angle = in.degrees("angle");
    }
    course.items.push_back(item);
}

// The entry of `table` that the next word names, or null after a complaint.
template <typename Table>
typename Table::value_type const* read_choice(Reader& in, Table const& table,
                                              std::string_view what) {
    std::string_view const word = in.word("kind of ", what);
    for (auto const& entry : table) {
        if (entry.first == word) return &entry;
    }
    in.complain(in_quotes(word).append(" is no kind of ").append(what));
    return nullptr;
}

void read_area(Reader& in, Course& course) {
    GroundArea area{.line = in.data.number};
    auto const* const choice = read_choice(in, GROUNDS, "ground");
    if (choice != nullptr) area.kind = choice->second;
    while (in.good && !in.at_end()) area.corners.push_back(in.point("corner"));
    if (area.corners.size() < 3) in.complain("an area needs at least three corners");
    course.areas.push_back(std::move(area));
}

std::vector<Point> read_way(Reader& in) {
    std::vector<Point> way;
    while (in.good && !in.at_end()) way.push_back(in.point("point"));
    if (way.size() < 2) in.complain("a way needs at least two points");
    return way;
}

void read_lane(Reader& in, Course& course) {
    Lane lane{.line = in.data.number};
    auto const* const choice = read_choice(in, LANES, "lane");
    if (choice != nullptr) lane.kind = choice->second;
    lane.width = in.number("width", 4, 60);
    lane.way = read_way(in);
    if (in.good) course.lanes.push_back(std::move(lane));
}

void read_fork(Reader& in, Course& course) {
    Fork fork{.line = in.data.number};
    fork.width = in.number("width", 24, 240);
    fork.kerb_depth = in.number("depth of the kerbs", 0, 4);
    fork.way = read_way(in);
    if (fork.way.size() < 3) in.complain("a fork needs at least three points");
    if (in.good) course.forks.push_back(std::move(fork));
}

// A round kind by its word.
SceneryKind read_round_kind(Reader& in) {
    std::string_view const word = in.word("kind");
    KindWord const* const kind = find_kind(word);
    if (kind != nullptr && kind->round) return kind->kind;
    in.complain(in_quotes(word) + " is no kind of round thing");
    return SceneryKind::tree;
}

void read_row(Reader& in, Course& course) {
    SceneryRow row{.kind = read_round_kind(in), .line = in.data.number};
    row.spacing = in.number("spacing", 4, 400);
    row.size = in.number("size", 2, 400);
    row.way = read_way(in);
    if (in.good) course.rows.push_back(std::move(row));
}

void read_scatter(Reader& in, Course& course) {
    SceneryScatter scatter{.kind = read_round_kind(in), .line = in.data.number};
    scatter.count = static_cast<int>(in.number("count", 1, MAX_SCATTER));
    scatter.min_size = in.number("smallest size", 2, 400);
    scatter.max_size = in.number("largest size", scatter.min_size, 400);
    scatter.high = {static_cast<double>(course.width), static_cast<double>(course.height)};
    if (in.good && !in.at_end()) {
        scatter.low = in.point("first corner");
        scatter.high = in.point("second corner");
        if (scatter.high.x <= scatter.low.x || scatter.high.y <= scatter.low.y) {
            in.complain("the second corner must lie below and to the right of the first");
        }
    }
    course.scatters.push_back(scatter);
}

void read_lettering(Reader& in, Course& course) {
    Lettering lettering{.line = in.data.number};
    lettering.at = in.point("place");
    lettering.height = in.number("height", 4, 400);
    lettering.text = in.word("text");
    course.letterings.push_back(std::move(lettering));
}

using Statement = void (*)(Reader&, Course&);

constexpr std::array<std::pair<std::string_view, Statement>, 16> STATEMENTS{{
    {"name", [](Reader& in, Course& course) { course.name = in.word("name"); }},
    {"place", [](Reader& in, Course& course) { course.place = in.word("place"); }},
    {"theme",
     [](Reader& in, Course& course) {
         course.theme = in.word("theme");
         course.theme_line = in.data.number;
     }},
    {"size", read_size},
    {"width", [](Reader& in, Course& course) { course.road_width = in.number("width", 40, 240); }},
    {"radius",
     [](Reader& in, Course& course) { course.corner_radius = in.number("radius", 30, 4000); }},
    {"kerbs", read_kerbs},
    {"start", read_start},
    {"goal", read_goal},
    {"point", read_point},
    {"fork", read_fork},
    {"area", read_area},
    {"lane", read_lane},
    {"row", read_row},
    {"scatter", read_scatter},
    {"lettering", read_lettering},
}};

void read_statement(DataLine const& data, Course& course, Faults& faults) {
    Reader in{.data = data, .faults = faults};
    auto const* const found =
        std::find_if(STATEMENTS.begin(), STATEMENTS.end(),
                     [&](auto const& statement) { return statement.first == data.words[0]; });
    if (found != STATEMENTS.end()) {
        found->second(in, course);
    } else if (find_kind(data.words[0]) != nullptr) {
        read_item(in, course);
    } else {
        in.complain("no such field");
    }
    if (in.good) in.finish();
}

// What is missing is missed at the end of the file.
void check_complete(Course const& course, int last_line, Faults& faults) {
    auto const miss = [&](char const* cause) { faults.push_back({last_line, cause}); };
    if (course.width == 0) miss("the size is missing");
    if (course.theme.empty()) miss("the theme is missing");
    if (course.start_line == 0) miss("the start is missing");
    if (course.goal_line == 0) miss("the goal line is missing");
    if (course.points.size() < 3) miss("the road needs at least three points");
}

} // namespace

std::optional<Course> parse_course(std::string_view text, Faults& faults) {
    Course course;
    DataReader reader(text);
    DataLine data{.number = 1, .words = {}};
    while (reader.next(data, faults)) read_statement(data, course, faults);
    if (faults.empty()) check_complete(course, data.number, faults);
    if (!faults.empty()) return std::nullopt;
    return course;
}
