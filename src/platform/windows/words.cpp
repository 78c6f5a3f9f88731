#include "platform/windows/words.h"

#include <windows.h>

std::wstring to_wide(std::string const& text) {
    int const length = static_cast<int>(text.size());
    int const size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
    return wide;
}

std::string to_utf8(std::wstring const& text) {
    int const length = static_cast<int>(text.size());
    auto const convert = [&](char* out, int room) {
        return WideCharToMultiByte(CP_UTF8, 0, text.data(), length, out, room, nullptr, nullptr);
    };
    int const size = convert(nullptr, 0);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    convert(utf8.data(), size);
    return utf8;
}
