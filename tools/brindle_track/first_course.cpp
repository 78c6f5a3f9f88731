#include "brindle_track/first_course.h"

#include <string_view>

namespace {

// All lengths are in cells; a car is 13 wide and 26 long and does 317 a second.
constexpr std::string_view BODY =
    R"(size   1600 1000          # of the whole picture: width and height
width  80                 # of the road
kerbs  4 200              # 4 cells deep, in every corner tighter than a radius of 200

# The goal line stands upright across the road, from well above it to well below. The cars stand
# in boxes 32 cells to its right, and drive to the right.
goal   700 140 700 260
start  732 200

# The road: x grows to the right, y downwards. It runs from point to point and closes by itself; at
# each point it bends with that radius. Move a point, build, drive.
point  200 200 radius 140
point 1400 200 radius 140
point 1400 520 radius 140
point  900 620 radius 110
point  900 820 radius 90
point  200 820 radius 140

# What stands beside it: a field with a hedge, a farm, a lane, a stand for those who watch.
area field 420 340  760 330  780 520  430 540
row  bush 15 14  412 330  772 320
lane track 13  440 600  700 580  860 480  1180 440
house 900 430 60 46 10
car   960 470 24 12 -15
stand 700 116 240 48 0
scatter tree 120 22 48  350 300  1300 700
)";

} // namespace

std::string first_course(std::string const& name, std::string const& theme) {
    return "# brindle-track build FILE makes a track of this, brindle-track try FILE starts the "
           "game\n"
           "# on it as well. making-a-track.md tells all that can stand here.\n"
           "name   \"" +
           name + "\"\ntheme  " + theme + "\n" + std::string(BODY);
}
