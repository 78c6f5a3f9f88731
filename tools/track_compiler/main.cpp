// track_compiler COURSE THEMES STEM: makes STEM.trk and STEM.png from a course description and the
// theme that it names. Exit status 1, with file, line and cause on standard error, for a course
// that cannot be raced; 2 for a wrong call.

#include "track_compiler/compile_course.h"
#include "track_compiler/course_parser.h"
#include "track_compiler/data_file.h"
#include "track_compiler/grid_writer.h"
#include "track_compiler/palette.h"

#include <SDL_image.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace {

namespace fs = std::filesystem;

void report(std::string const& path, Faults const& faults) {
    for (Fault const& fault : faults) {
        std::fprintf(stderr, "%s:%d: %s\n", path.c_str(), fault.line, fault.cause.c_str());
    }
}

std::optional<std::string> read_or_report(std::string const& path) {
    std::optional<std::string> text = read_text(path);
    if (!text) std::fprintf(stderr, "%s:1: cannot be read\n", path.c_str());
    return text;
}

std::optional<Course> read_course(std::string const& path) {
    std::optional<std::string> const text = read_or_report(path);
    if (!text) return std::nullopt;
    Faults faults;
    std::optional<Course> course = parse_course(*text, faults);
    report(path, faults);
    return course;
}

std::optional<Theme> read_theme(std::string const& path) {
    std::optional<std::string> const text = read_or_report(path);
    if (!text) return std::nullopt;
    Faults faults;
    std::optional<Theme> theme = parse_theme(*text, faults);
    report(path, faults);
    return theme;
}

bool write_text(std::string const& path, std::string const& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) std::fprintf(stderr, "%s: cannot be written\n", path.c_str());
    return static_cast<bool>(file);
}

bool write_picture(std::string const& path, PaintSource const& source) {
    SurfaceHandle const painted = paint_track(source);
    SurfaceHandle const picture = painted ? reduce_to_palette(painted.get()) : SurfaceHandle();
    if (picture && IMG_SavePNG(picture.get(), path.c_str()) == 0) return true;
    std::fprintf(stderr, "%s: %s\n", path.c_str(), SDL_GetError());
    return false;
}

bool compile(std::string const& course_path, fs::path const& themes, std::string const& stem) {
    std::optional<Course> course = read_course(course_path);
    if (!course) return false;
    std::string const theme_path = themes / (course->theme + ".theme");
    if (!fs::exists(theme_path)) {
        report(course_path, {{course->theme_line, "theme: there is no file " + theme_path}});
        return false;
    }
    std::optional<Theme> const theme = read_theme(theme_path);
    if (!theme) return false;
    Faults faults;
    std::optional<CompiledCourse> const made =
        compile_course(*std::move(course), *theme, PICTURE_REACH, faults);
    report(course_path, faults);
    if (!made) return false;
    // The picture first: a track file without its picture would look finished to the build.
    if (!write_picture(stem + ".png", made->paint_source())) return false;
    if (!write_text(stem + ".trk", track_file_text(made->track))) return false;
    std::printf("%s: %d x %d cells, a lap of %.0f cells, %zu things\n", stem.c_str(),
                made->track.width, made->track.height, made->line.length, made->items.size());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: track_compiler COURSE THEMES STEM\n");
        return 2;
    }
    return compile(argv[1], argv[2], argv[3]) ? 0 : 1;
}
