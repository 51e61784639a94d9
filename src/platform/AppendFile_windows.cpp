#include "platform/AppendFile.h"
#include "platform/Wide.h"

#include <cstdint>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

std::FILE* _KXOpenToAppend(const char* path, bool empties) {
    const std::wstring wide = _KXWidePath(path);
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    if (empties) // a right that is only to append does not empty anything
        if (const HANDLE old =
                CreateFileW(wide.c_str(), GENERIC_WRITE, shared, nullptr, TRUNCATE_EXISTING, 0, nullptr);
            old != INVALID_HANDLE_VALUE)
            CloseHandle(old);
    const HANDLE handle = CreateFileW(wide.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, shared, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_APPEND | _O_BINARY);
    if (descriptor == -1) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* const file = _fdopen(descriptor, "ab");
    if (!file)
        _close(descriptor);
    return file;
}
