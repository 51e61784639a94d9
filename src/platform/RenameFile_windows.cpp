#include "platform/RenameFile.h"
#include "platform/Wide.h"

#include <windows.h>

// That of the standard library tells no reason but "Input/output error".
std::error_code _KXRenameFile(const std::string& from, const std::string& to) {
    if (MoveFileExW(_KXWidePath(from).c_str(), _KXWidePath(to).c_str(), MOVEFILE_REPLACE_EXISTING))
        return {};
    return {static_cast<int>(GetLastError()), std::system_category()};
}
