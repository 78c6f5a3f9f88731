// Any bytes as a course: one, or faults that say why not.

#include "input_file.h"
#include "track_compiler/course_parser.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Faults faults;
    require(parse_course(as_text(data, size), faults).has_value() == faults.empty());
    return 0;
}
