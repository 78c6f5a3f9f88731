// Every course that we ship compiles, fits the menu, and is lapped by two computer drivers who
// bump into each other.

#include "race/headless_race.h"
#include "track_compiler/compile_course.h"
#include "track_compiler/course_parser.h"
#include "track_compiler/data_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LAPS = 3;
constexpr double MAX_LAP_S = 70.0;
constexpr int MAX_STUCK_STEPS = 1000; // 10 s

std::vector<std::string> course_files() {
    std::vector<std::string> files;
    for (fs::directory_entry const& entry : fs::directory_iterator(BRINDLE_COURSES)) {
        if (entry.path().extension() == ".course") files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class ShippedCourse : public testing::TestWithParam<std::string> {};

std::optional<CompiledCourse> compile_file(std::string const& path, Faults& faults) {
    std::optional<Course> course = parse_course(read_text(path).value_or(""), faults);
    if (!course) return std::nullopt;
    fs::path const theme_path =
        fs::path(path).parent_path() / "themes" / (course->theme + ".theme");
    std::optional<Theme> const theme = parse_theme(read_text(theme_path).value_or(""), faults);
    if (!theme) return std::nullopt;
    return compile_course(*std::move(course), *theme, GRID_REACH, faults);
}

// Longest time, in steps, that a car stayed within a circle of 20 cells.
struct StandWatch {
    double x = 0.0;
    double y = 0.0;
    int since = 0;
    int longest = 0;

    void look(CarState const& car, int step) {
        if (std::hypot(car.x - x, car.y - y) > 20.0) {
            x = car.x;
            y = car.y;
            since = step;
        }
        longest = std::max(longest, step - since);
    }
};

TEST_P(ShippedCourse, IsLappedByTwoComputerDrivers) {
    Faults faults;
    std::optional<CompiledCourse> made = compile_file(GetParam(), faults);
    for (Fault const& fault : faults) ADD_FAILURE() << fault.line << ": " << fault.cause;
    ASSERT_TRUE(made);
    EXPECT_LE(made->track.width, 1.7 * made->track.height) << "too wide for the menu's row";
    EXPECT_FALSE(made->course.name.empty());
    EXPECT_FALSE(made->course.place.empty());

    HeadlessRace race;
    HeadlessSetup setup;
    setup.arcade = true;
    headless_start(race, std::move(made->track), setup);
    std::array<StandWatch, 2> watches;
    auto const done = [&] {
        return race.log[0].lap_ms.size() >= LAPS && race.log[1].lap_ms.size() >= LAPS;
    };
    for (int step = 0; step < LAPS * 100 * MAX_LAP_S && !done(); step++) {
        headless_step(race);
        watches[0].look(race.sim.p1.car, step);
        watches[1].look(race.sim.p2.car, step);
    }
    EXPECT_TRUE(done());
    for (std::size_t car = 0; car < 2; car++) {
        EXPECT_LE(watches[car].longest, MAX_STUCK_STEPS) << "car " << car + 1;
        for (std::uint32_t const ms : race.log[car].lap_ms) EXPECT_LE(ms, MAX_LAP_S * 1000.0);
    }
}

std::string test_name(testing::TestParamInfo<std::string> const& info) {
    std::string name = fs::path(info.param).stem().string();
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, ShippedCourse, testing::ValuesIn(course_files()), test_name);

} // namespace
