#include "platform/Wide.h"

#include "platform/WindowsNames.h"

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

// In the one form that may have any length; the system takes it as it stands, and so it has to be whole and
// plain.
static std::wstring withoutLimit(const std::wstring& path) {
    if (path.starts_with(L"\\\\?\\"))
        return path;
    std::wstring whole(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    constexpr std::size_t drive = 3; // whose slash stays
    if (whole.size() > drive && whole.ends_with(L'\\'))
        whole.pop_back();
    return whole.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + whole.substr(2) : L"\\\\?\\" + whole;
}

std::wstring _KXWidePath(std::string_view path) {
    constexpr std::size_t longest = MAX_PATH - 12; // of a folder, since a short name had to fit into each
    const std::wstring wide = _KXWide(_KXMarkWindowsPath(path));
    return wide.size() < longest ? wide : withoutLimit(wide);
}

std::wstring _KXWideFolder(std::string_view path) { return withoutLimit(_KXWide(_KXMarkWindowsPath(path))); }

std::string _KXNarrowPath(std::wstring_view path) {
    constexpr std::wstring_view noLimit = L"\\\\?\\", share = L"\\\\?\\UNC\\";
    const bool isShare = path.starts_with(share);
    if (path.starts_with(noLimit))
        path.remove_prefix(isShare ? share.size() : noLimit.size());
    return _KXUnmarkWindowsPath((isShare ? "//" : "") + _KXNarrow(path));
}
