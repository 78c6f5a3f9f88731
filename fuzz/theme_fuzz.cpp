// Any bytes as a theme: one, or faults that say why not.

#include "input_file.h"
#include "track_compiler/theme.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Faults faults;
    require(parse_theme(as_text(data, size), faults).has_value() == faults.empty());
    return 0;
}
