#include "platform/console.h"

#include <cstdio>
#include <windows.h>

namespace {

// Leaves a stream alone that already leads somewhere, say into a file.
void join(DWORD which, std::FILE* stream) {
    HANDLE const now = GetStdHandle(which);
    if (now != nullptr && now != INVALID_HANDLE_VALUE) return;
    (void)std::freopen("CONOUT$", "w", stream);
}

} // namespace

void join_console() {
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
    join(STD_OUTPUT_HANDLE, stdout);
    join(STD_ERROR_HANDLE, stderr);
    SetConsoleOutputCP(CP_UTF8);
}
