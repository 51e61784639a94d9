#include "platform/Wide.h"

#include <algorithm>

#include <windows.h>

std::wstring _KXWide(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string _KXNarrow(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string narrow(static_cast<std::size_t>(
                           WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), static_cast<int>(narrow.size()),
                        nullptr, nullptr);
    return narrow;
}

// The folder's own limit is twelve short of a file's, since a short name had to fit into each.
std::wstring _KXWidePath(std::string_view path) {
    constexpr std::size_t longest = MAX_PATH - 12;
    std::wstring wide = _KXWide(path);
    if (wide.size() < longest || wide.starts_with(L"\\\\"))
        return wide;
    const DWORD size = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring whole(size, L'\0');
    whole.resize(GetFullPathNameW(wide.c_str(), size, whole.data(), nullptr));
    return whole.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + whole.substr(2) : L"\\\\?\\" + whole;
}

std::string _KXNarrowPath(std::wstring_view path) {
    std::string narrow = _KXNarrow(path);
    std::ranges::replace(narrow, '\\', '/');
    return narrow;
}
