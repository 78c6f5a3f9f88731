#include "base/utf8.h"

std::size_t first_code_point(std::string_view text, std::uint32_t& code) {
    auto const lead = static_cast<unsigned char>(text[0]);
    std::size_t const length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    code = length == 1 ? lead : lead & (0x7FU >> length);
    if (lead >= 0xF8 || (length == 1 && lead >= 0x80)) code = 0;
    for (std::size_t at = 1; at < length; ++at) {
        if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U) {
            code = 0;
            return at;
        }
        if (code != 0) code = (code << 6U) | (static_cast<unsigned char>(text[at]) & 0x3FU);
    }
    return length;
}
