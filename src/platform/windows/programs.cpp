#include "platform/programs.h"

#include "platform/windows/words.h"

#include <windows.h>

namespace {

// A word as the started program takes its command line apart: backslashes count double before a
// quote, and only there.
std::wstring quoted(std::wstring const& word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (wchar_t const c : word) {
        if (c == L'"') text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    text.append(backslashes, L'\\');
    return text + L'"';
}

// Waits for its end.
int status_of(PROCESS_INFORMATION const& program) {
    DWORD status = 1;
    WaitForSingleObject(program.hProcess, INFINITE);
    GetExitCodeProcess(program.hProcess, &status);
    CloseHandle(program.hThread);
    CloseHandle(program.hProcess);
    return static_cast<int>(status);
}

} // namespace

std::string program_file(std::string const& name) {
    return name + ".exe";
}

// A program cannot become another one here: this one waits for it.
Handover hand_over(std::vector<std::string> words) {
    std::wstring line;
    for (std::string const& word : words) line += quoted(to_wide(word)) + L' ';
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION program{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                       &program) == 0) {
        return {.started = false, .status = 0};
    }
    return {.started = true, .status = status_of(program)};
}
