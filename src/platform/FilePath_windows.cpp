#include "platform/FilePath.h"
#include "platform/Wide.h"

std::filesystem::path _KXFilePath(std::string_view text) { return _KXWidePath(text); }

std::string _KXTextOf(const std::filesystem::path& path) { return _KXNarrowPath(path.native()); }

bool _KXIsSlash(char letter) { return letter == '/' || letter == '\\'; }
