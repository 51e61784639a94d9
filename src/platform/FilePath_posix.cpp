#include "platform/FilePath.h"

std::filesystem::path _KXFilePath(std::string_view text) { return text; }

std::string _KXTextOf(const std::filesystem::path& path) { return path.native(); }

bool _KXIsSlash(char letter) { return letter == '/'; }
