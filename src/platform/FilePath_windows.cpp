#include "platform/FilePath.h"
#include "platform/Wide.h"
#include "platform/WindowsNames.h"

#include <windows.h>

std::filesystem::path _KXFilePath(std::string_view text) { return _KXWidePath(text); }

std::filesystem::path _KXPlainPath(std::string_view text) { return _KXWide(_KXMarkWindowsPath(text)); }

std::string _KXTextOf(const std::filesystem::path& path) { return _KXNarrowPath(path.native()); }

std::error_code _KXPathFault(std::string_view path) { return _KXFaultOfWindowsPath(path); }

std::string _KXPathForLibraries(std::string_view path) { return _KXNarrow(_KXWidePath(path)); }

std::string _KXPathForPlainC(std::string_view path) {
    if (GetACP() == CP_UTF8) // as the program's manifest wants it
        return _KXPathForLibraries(path);
    const std::wstring wide = _KXWidePath(path);
    const int length = static_cast<int>(wide.size()), room = 4 * length;
    std::string narrow(static_cast<std::size_t>(room), '\0');
    BOOL isLost = FALSE;
    narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), length, narrow.data(), room, nullptr, &isLost)));
    return isLost ? "" : narrow;
}

std::string _KXTextOfPlainC(std::string_view path) {
    const int length = static_cast<int>(path.size());
    std::wstring wide(path.size(), L'\0'); // no character takes more there
    wide.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, path.data(), length, wide.data(), length)));
    return _KXNarrowPath(wide);
}

bool _KXIsSlash(char letter) { return letter == '/' || letter == '\\'; }
