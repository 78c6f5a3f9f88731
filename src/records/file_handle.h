#pragma once

// An owning handle for a C stream, where nobody asks how the closing went.

#include <cstdio>
#include <memory>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;
