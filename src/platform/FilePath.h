#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// A path as the file system has it. Any text makes one, if only of a file that is not there.
std::filesystem::path _KXFilePath(std::string_view text);
/// The library's text for it, with slashes.
std::string _KXTextOf(const std::filesystem::path& path);
/// Whether a letter stands between the parts of a path.
bool _KXIsSlash(char letter);
