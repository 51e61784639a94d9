#include "platform/FilePath.h"

std::filesystem::path _KXFilePath(std::string_view text) { return text; }

std::filesystem::path _KXPlainPath(std::string_view text) { return text; }

std::string _KXTextOf(const std::filesystem::path& path) { return path.native(); }

std::error_code _KXPathFault(std::string_view) { return {}; }

std::string _KXPathForLibraries(std::string_view path) { return std::string(path); }

std::string _KXPathForPlainC(std::string_view path) { return std::string(path); }

std::string _KXTextOfPlainC(std::string_view path) { return std::string(path); }

bool _KXIsSlash(char letter) { return letter == '/'; }
