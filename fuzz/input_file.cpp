#include "input_file.h"

#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

struct ScratchFolder {
    fs::path path = fs::temp_directory_path() / ("brindle-fuzz-" + std::to_string(getpid()));
    ScratchFolder() { fs::create_directories(path); }
    ~ScratchFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
};

} // namespace

std::string_view as_text(std::uint8_t const* data, std::size_t size) {
    return {reinterpret_cast<char const*>(data), size};
}

// Nothing is ever written: the const_cast is for the interface.
InputStream::InputStream(std::uint8_t const* data, std::size_t size)
    : std::istream(static_cast<std::streambuf*>(this)) {
    char* first = const_cast<char*>(reinterpret_cast<char const*>(data)); // NOLINT
    setg(first, first, first + size);
}

fs::path const& scratch_folder() {
    static ScratchFolder const folder;
    return folder.path;
}

void write_bytes(fs::path const& path, std::uint8_t const* data, std::size_t size) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<char const*>(data), static_cast<std::streamsize>(size));
    require(file.good());
}

void require(bool holds) {
    if (!holds) std::abort();
}
