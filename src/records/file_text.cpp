#include "records/file_text.h"

#include "platform/files.h"
#include "records/file_handle.h"

#include <array>
#include <cstdio>

namespace {

constexpr std::size_t MOST_BYTES = std::size_t{64} << 20U;

} // namespace

std::optional<std::string> read_file_text(std::string const& path, bool* broken_off) {
    FileHandle const file(open_file(path, "r"));
    if (!file) return std::nullopt;
    std::string text;
    std::array<char, 4096> block{};
    std::size_t count = 0;
    do {
        count = std::fread(block.data(), 1, block.size(), file.get());
        text.append(block.data(), count);
    } while (count == block.size() && text.size() < MOST_BYTES);
    if (broken_off != nullptr) {
        *broken_off = std::ferror(file.get()) != 0 || text.size() >= MOST_BYTES;
    }
    return text;
}

std::string surely_written(std::string const& text) {
    std::string const before_zero = text.substr(0, text.find('\0'));
    return before_zero.substr(0, before_zero.find_last_of('\n') + 1);
}
