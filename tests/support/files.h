#pragma once

// Folders and files of a test's own. No test touches the user's records: the test program's main
// moves the preference folder into a temporary place before anything asks for it.

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

// A fresh folder that goes with the object.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }
    [[nodiscard]] std::string file(std::string const& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

// A fresh folder that is the working directory for the object's lifetime.
class WorkingDir : public TempDir {
public:
    WorkingDir();
    ~WorkingDir();
    WorkingDir(WorkingDir const&) = delete;
    WorkingDir& operator=(WorkingDir const&) = delete;

private:
    std::filesystem::path before_;
};

void write_file(std::filesystem::path const& path, std::string const& bytes);
std::string read_file(std::filesystem::path const& path);
std::size_t files_in(std::filesystem::path const& folder);

// The race's faces by the names of its files.
inline constexpr std::array RACE_FONTS{"Montserrat-Black.otf", "LiberationMono-Bold.ttf",
                                       "RocketBrush-DYwyW.otf"};
// Lays `face`, one of Debian's under /usr/share/fonts, under each name into art/fonts of the
// working directory.
void lay_fonts(std::string const& face, std::span<char const* const> names);
