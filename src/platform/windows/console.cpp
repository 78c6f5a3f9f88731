#include "platform/console.h"

#include "platform/windows/words.h"

#include <cstdio>
#include <cstdlib>
#include <windows.h>
// Needs what windows.h declares.
#include <shellapi.h>

namespace {

UINT former_code_page = 0;

void give_code_page_back() {
    SetConsoleOutputCP(former_code_page);
}

// Leaves a stream alone that already leads somewhere, say into a file.
void join(DWORD which, std::FILE* stream) {
    HANDLE const now = GetStdHandle(which);
    if (now != nullptr && now != INVALID_HANDLE_VALUE) return;
    (void)std::freopen("CONOUT$", "w", stream);
}

} // namespace

void join_console() {
    if (AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
        join(STD_OUTPUT_HANDLE, stdout);
        join(STD_ERROR_HANDLE, stderr);
    }
    former_code_page = GetConsoleOutputCP(); // 0 without a console
    if (former_code_page == 0 || SetConsoleOutputCP(CP_UTF8) == 0) return;
    std::atexit(give_code_page_back);
}

// main's own words have lost the letters that the system's code page lacks.
std::vector<std::string> words_of_call(int /*argc*/, char** /*argv*/) {
    std::vector<std::string> words;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide != nullptr && i < count; ++i) words.push_back(to_utf8(wide[i]));
    LocalFree(static_cast<HLOCAL>(wide));
    return words;
}
