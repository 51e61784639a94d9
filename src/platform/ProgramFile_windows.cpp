#include "platform/ProgramFile.h"

#include "platform/Wide.h"

#include <windows.h>

std::string _KXProgramFile() {
    constexpr std::size_t longest = 32767; // of any path
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (size < path.size()) {
            path.resize(size);
            return _KXNarrowPath(path);
        }
        if (path.size() >= longest)
            return {};
        path.resize(2 * path.size());
    }
}
