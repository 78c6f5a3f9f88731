#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace {

std::wstring wide(std::string const& text) {
    return to_path(text).wstring();
}

} // namespace

std::filesystem::path to_path(std::string const& path) {
    return std::u8string(path.begin(), path.end());
}

std::FILE* open_file(std::string const& path, char const* mode) {
    return _wfopen(wide(path).c_str(), wide(mode).c_str());
}

// The old C library knows no "x" in fopen's mode.
std::FILE* create_file(std::string const& path) {
    int const file = _wopen(wide(path).c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY,
                            _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
}

bool take_name(std::string const& from, std::string const& to) {
    return MoveFileExW(wide(from).c_str(), wide(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

bool exchange_names(std::string const& /*one*/, std::string const& /*other*/) {
    return false;
}

// One mark for all folders: there is one in use.
void enter_folder(std::string const& /*folder*/, std::function<void()> const& if_alone) {
    HANDLE const mark = CreateMutexW(nullptr, FALSE, L"Local\\BrindleRunRecords");
    if (mark != nullptr && GetLastError() != ERROR_ALREADY_EXISTS) if_alone();
}

// Names are kept in the file system's own journal here: a folder needs no asking.
bool flush_to_disk(std::string const& path) {
    std::error_code error;
    if (std::filesystem::is_directory(to_path(path), error)) return true;
    HANDLE const file = CreateFileW(wide(path).c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    bool const flushed = FlushFileBuffers(file) != 0;
    return CloseHandle(file) != 0 && flushed;
}
