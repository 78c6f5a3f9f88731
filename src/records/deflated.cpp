#include "records/deflated.h"

#include <zlib.h>

std::optional<std::string> deflated(std::string const& text) {
    auto const length = static_cast<uLong>(text.size());
    uLongf size = compressBound(length);
    std::string packed(size, '\0');
    auto const* from = reinterpret_cast<Bytef const*>(text.data());
    auto* to = reinterpret_cast<Bytef*>(packed.data());
    if (compress2(to, &size, from, length, Z_BEST_COMPRESSION) != Z_OK) return std::nullopt;
    packed.resize(size);
    return packed;
}
