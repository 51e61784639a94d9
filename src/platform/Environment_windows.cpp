#include "platform/Environment.h"
#include "platform/Wide.h"

#include <windows.h>

std::optional<std::string> _KXEnvironment(const char* name) {
    const std::wstring wide = _KXWide(name);
    std::wstring value(32767, L'\0'); // the longest there is
    SetLastError(ERROR_SUCCESS);
    value.resize(GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return value.empty() && GetLastError() != ERROR_SUCCESS ? std::nullopt : std::optional(_KXNarrow(value));
}
