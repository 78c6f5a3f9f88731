#pragma once

// Folders and files of a test's own. No test touches the user's records: the test program's main
// moves the preference folder into a temporary place before anything asks for it.

#include <cstddef>
#include <filesystem>
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

// Makes `folder` the working directory for the object's lifetime.
class WorkingDir {
public:
    explicit WorkingDir(std::filesystem::path const& folder);
    ~WorkingDir();
    WorkingDir(WorkingDir const&) = delete;
    WorkingDir& operator=(WorkingDir const&) = delete;

private:
    std::filesystem::path before_;
};

void write_file(std::filesystem::path const& path, std::string const& bytes);
std::string read_file(std::filesystem::path const& path);
std::size_t files_in(std::filesystem::path const& folder);
