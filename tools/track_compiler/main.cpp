// track_compiler COURSE THEMES STEM: makes STEM.trk and STEM.png from a course description and the
// theme that it names. Exit status 1, with file, line and cause on standard error, for a course
// that cannot be raced; 2 for a wrong call. The build calls it; players have brindle-track.

#include "track_compiler/make_track.h"

#include <cstdio>
#include <utility>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: track_compiler COURSE THEMES STEM\n");
        return 2;
    }
    std::optional<Course> course = read_course(argv[1]);
    return course && make_track(*std::move(course), argv[1], {argv[2]}, argv[3]) ? 0 : 1;
}
