// Any bytes as the face that goes into a report: glyphs or none.

#include "records/truetype.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    TrueType const face(std::string(reinterpret_cast<char const*>(data), size));
    std::set<unsigned> glyphs;
    for (std::uint32_t code = 0; code < 0x600; code += 97) glyphs.insert(face.glyph_of(code));
    bool const any = face.advance(*glyphs.rbegin()) > 0 || !face.subset(glyphs).empty();
    return any ? 0 : -1; // what gives nothing is not worth keeping
}
