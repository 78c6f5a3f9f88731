#include "support/files.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "brindle-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp " + pattern);
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

WorkingDir::WorkingDir() : before_(fs::current_path()) {
    fs::current_path(path());
}

WorkingDir::~WorkingDir() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
}

void write_file(fs::path const& path, std::string const& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string read_file(fs::path const& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::size_t files_in(fs::path const& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

void lay_fonts(std::string const& face, std::span<char const* const> names) {
    fs::create_directories("art/fonts");
    for (fs::path const name : names) {
        fs::create_symlink("/usr/share/fonts/" + face, "art/fonts" / name);
    }
}
