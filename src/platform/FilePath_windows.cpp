#include "platform/FilePath.h"
#include "platform/Wide.h"
#include "platform/WindowsNames.h"

std::filesystem::path _KXFilePath(std::string_view text) { return _KXWidePath(text); }

std::filesystem::path _KXPlainPath(std::string_view text) { return _KXWide(_KXMarkWindowsPath(text)); }

std::string _KXTextOf(const std::filesystem::path& path) { return _KXNarrowPath(path.native()); }

std::error_code _KXPathFault(std::string_view path) { return _KXFaultOfWindowsPath(path); }

std::string _KXPathForLibraries(std::string_view path) { return _KXNarrow(_KXWidePath(path)); }

bool _KXIsSlash(char letter) { return letter == '/' || letter == '\\'; }
