#include "platform/files.h"

#include "platform/windows/words.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <windows.h>

namespace {

// As for the C library's own calls.
bool told_by_errno(bool done) {
    if (done) return true;
    std::error_code const error(static_cast<int>(GetLastError()), std::system_category());
    std::error_condition const known = error.default_error_condition();
    errno = known.category() == std::generic_category() ? known.value() : EACCES;
    return false;
}

char to_upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Whether somebody else, a virus scanner as a rule, has the file open for a moment.
bool is_held(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
}

// Whatever its folder, and whatever ends it: "nul.txt" is the void, "com1.txt" may be a modem.
bool is_device(std::string const& name) {
    std::string word = name.substr(0, name.find('.'));
    word.erase(word.find_last_not_of(' ') + 1);
    for (char& c : word) c = to_upper(c);
    if (word == "CON" || word == "PRN" || word == "AUX" || word == "NUL") return true;
    bool const is_port = word.starts_with("COM") || word.starts_with("LPT");
    return is_port && word.size() == 4 && word[3] >= '0' && word[3] <= '9';
}

} // namespace

std::filesystem::path to_path(std::string const& path) {
    return to_wide(path);
}

std::string to_text(std::filesystem::path const& path) {
    return to_utf8(path.wstring());
}

bool can_name_file(std::string const& name) {
    return !name.empty() && name.find_first_of("<>:\"/\\|?*") == std::string::npos &&
           !name.ends_with('.') && !name.ends_with(' ') && !is_device(name);
}

std::string name_of_no_device(std::string const& name) {
    return is_device(name) ? "_" + name : name;
}

bool links_for_everybody() {
    return false;
}

std::FILE* open_file(std::string const& path, char const* mode) {
    return _wfopen(to_wide(path).c_str(), to_wide(mode).c_str());
}

// The old C library knows no "x" in fopen's mode.
std::FILE* create_file(std::string const& path) {
    int const file = _wopen(to_wide(path).c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY,
                            _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
}

// What is held is tried again for a few frames at most: a lap may just have ended.
bool take_name(std::string const& from, std::string const& to) {
    constexpr int TRIES = 5;
    constexpr DWORD BETWEEN_MS = 10;
    for (int i = 1;; ++i) {
        bool const done =
            MoveFileExW(to_wide(from).c_str(), to_wide(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
        if (done || i == TRIES || !is_held(GetLastError())) return told_by_errno(done);
        Sleep(BETWEEN_MS);
    }
}

bool add_name(std::string const& file, std::string const& name) {
    return CreateHardLinkW(to_wide(name).c_str(), to_wide(file).c_str(), nullptr) != 0;
}

bool exchange_names(std::string const& /*one*/, std::string const& /*other*/) {
    return false;
}

// One pair of marks for all folders: there is one in use. The first is held while somebody finds
// out whether it is alone, the second, never taken, is there as long as a program is.
void enter_folder(std::string const& /*folder*/, std::function<void()> const& if_alone) {
    HANDLE const door = CreateMutexW(nullptr, FALSE, L"Local\\BrindleRunRecordsDoor");
    if (door == nullptr) return;
    WaitForSingleObject(door, INFINITE);
    HANDLE const mark = CreateMutexW(nullptr, FALSE, L"Local\\BrindleRunRecords");
    if (mark != nullptr && GetLastError() != ERROR_ALREADY_EXISTS) if_alone();
    ReleaseMutex(door);
    CloseHandle(door);
}

// Names are kept in the file system's own journal here: a folder needs no asking.
bool flush_to_disk(std::string const& path) {
    std::error_code error;
    if (std::filesystem::is_directory(to_path(path), error)) return true;
    HANDLE const file = CreateFileW(to_wide(path).c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    bool const flushed = FlushFileBuffers(file) != 0;
    return CloseHandle(file) != 0 && flushed;
}
