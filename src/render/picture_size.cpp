#include "render/picture_size.h"

#include "platform/files.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <istream>
#include <limits>
#include <string_view>

using namespace std::string_view_literals;

namespace {

constexpr std::size_t HEAD_SIZE = 26; // as far as the PNG and BMP fields go
using Head = std::array<char, HEAD_SIZE>;

std::uint32_t byte_at(Head const& head, std::size_t at) {
    return static_cast<std::uint8_t>(head[at]);
}

std::uint32_t big_endian(Head const& head, std::size_t at) {
    return byte_at(head, at) << 24U | byte_at(head, at + 1) << 16U | byte_at(head, at + 2) << 8U |
           byte_at(head, at + 3);
}

std::uint32_t little_endian(Head const& head, std::size_t at) {
    return byte_at(head, at + 3) << 24U | byte_at(head, at + 2) << 16U |
           byte_at(head, at + 1) << 8U | byte_at(head, at);
}

int to_int(std::uint32_t value) {
    constexpr std::uint32_t LARGEST = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(value, LARGEST));
}

SDL_Point bmp_size(Head const& head) {
    if (little_endian(head, 14) == 12) { // the oldest kind has 16-bit fields
        std::uint32_t const both = little_endian(head, 18);
        return {to_int(both & 0xffffU), to_int(both >> 16U)};
    }
    std::uint32_t const height = little_endian(head, 22); // negative if the top row comes first
    return {to_int(little_endian(head, 18)), to_int(std::min(height, ~height + 1U))};
}

bool is_jpeg_frame(int marker) {
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

int read_16(std::istream& file) {
    int const high = file.get();
    return high << 8 | file.get();
}

// Walks from segment to segment up to the one that gives the size.
SDL_Point jpeg_size(std::istream& file) {
    file.seekg(2);
    while (file.get() == 0xff) {
        int marker = file.get();
        while (marker == 0xff) marker = file.get();
        int const length = read_16(file);
        if (!file || length < 2) break;
        if (is_jpeg_frame(marker)) {
            file.ignore(1);
            int const height = read_16(file);
            int const width = read_16(file);
            return file ? SDL_Point{width, height} : SDL_Point{};
        }
        file.ignore(length - 2);
    }
    return {};
}

} // namespace

SDL_Point picture_size(char const* path) {
    std::ifstream file(to_path(path), std::ios::binary);
    return picture_size(file);
}

SDL_Point picture_size(std::istream& file) {
    Head head{};
    if (!file.read(head.data(), head.size())) return {};
    std::string_view const text(head.data(), head.size());
    if (text.starts_with("\x89PNG\r\n\x1a\n"sv) && text.substr(12, 4) == "IHDR") {
        return {to_int(big_endian(head, 16)), to_int(big_endian(head, 20))};
    }
    if (text.starts_with("BM"sv)) return bmp_size(head);
    if (text.starts_with("\xff\xd8"sv)) return jpeg_size(file);
    return {};
}
