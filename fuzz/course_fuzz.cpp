// Any bytes as a course, and as a theme: either one, or faults that say why not.

#include "input_file.h"
#include "track_compiler/course_parser.h"
#include "track_compiler/theme.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(as_text(data, size));
    Faults faults;
    require(parse_course(text, faults).has_value() == faults.empty());
    faults.clear();
    require(parse_theme(text, faults).has_value() == faults.empty());
    return 0;
}
