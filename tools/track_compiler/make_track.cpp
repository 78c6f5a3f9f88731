#include "track_compiler/make_track.h"

#include "platform/files.h"
#include "track_compiler/compile_course.h"
#include "track_compiler/course_parser.h"
#include "track_compiler/data_file.h"
#include "track_compiler/grid_writer.h"
#include "track_compiler/palette.h"

#include <SDL_image.h>

#include <cstdio>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

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

std::optional<Theme> read_theme(std::string const& path) {
    std::optional<std::string> const text = read_or_report(path);
    if (!text) return std::nullopt;
    Faults faults;
    std::optional<Theme> theme = parse_theme(*text, faults);
    report(path, faults);
    return theme;
}

std::optional<Theme> find_theme(Course const& course, std::string const& course_path,
                                std::vector<fs::path> const& themes) {
    std::string tried;
    for (fs::path const& folder : themes) {
        tried = to_text(folder / to_path(course.theme + ".theme"));
        if (is_there(to_path(tried))) return read_theme(tried);
    }
    report(course_path, {{course.theme_line, "theme: there is no file " + tried}});
    return std::nullopt;
}

bool write_text(std::string const& path, std::string const& text) {
    std::ofstream file(to_path(path), std::ios::binary);
    file << text;
    file.close();
    if (!file) std::fprintf(stderr, "%s: cannot be written\n", path.c_str());
    return static_cast<bool>(file);
}

bool write_picture(std::string const& path, PaintSource const& source, Progress progress) {
    progress("painting the picture");
    SurfaceHandle const painted = paint_track(source);
    progress("choosing its colours");
    SurfaceHandle const picture = painted ? reduce_to_palette(painted.get()) : SurfaceHandle();
    progress("writing");
    if (picture && IMG_SavePNG(picture.get(), path.c_str()) == 0) return true;
    std::fprintf(stderr, "%s: %s\n", path.c_str(), SDL_GetError());
    return false;
}

void say_nothing(char const* /*step*/) {}

} // namespace

std::optional<Course> read_course(std::string const& path) {
    std::optional<std::string> const text = read_or_report(path);
    if (!text) return std::nullopt;
    Faults faults;
    std::optional<Course> course = parse_course(*text, faults);
    report(path, faults);
    return course;
}

bool make_track(Course course, std::string const& course_path, std::vector<fs::path> const& themes,
                std::string const& stem, Progress progress) {
    if (progress == nullptr) progress = say_nothing;
    std::optional<Theme> const theme = find_theme(course, course_path, themes);
    if (!theme) return false;
    progress("laying out the road");
    Faults faults;
    std::optional<CompiledCourse> const made =
        compile_course(std::move(course), *theme, PICTURE_REACH, faults);
    report(course_path, faults);
    if (!made) return false;
    // The picture first: a track file without its picture would look finished to the build.
    if (!write_picture(stem + ".png", made->paint_source(), progress)) return false;
    if (!write_text(stem + ".trk", track_file_text(made->track))) return false;
    std::printf("%s: %d x %d cells, a lap of %.0f cells, %zu things\n",
                to_text(to_path(stem).filename()).c_str(), made->track.width, made->track.height,
                made->line.length, made->items.size());
    return true;
}
