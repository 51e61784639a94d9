#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// A path for the file system's calls. Any text makes one, if only of a file that is not there.
std::filesystem::path _KXFilePath(std::string_view text);
/// A path to join others to and to take apart; the calls want _KXFilePath() of its text.
std::filesystem::path _KXPlainPath(std::string_view text);
/// The library's text for either, with slashes.
std::string _KXTextOf(const std::filesystem::path& path);
/// Why no file of this system can have a path; none where one can. The system's calls refuse such a path.
std::error_code _KXPathFault(std::string_view path);
/// A path for libraries that open files by themselves.
std::string _KXPathForLibraries(std::string_view path);
/// The same for those that know no UTF-8; empty where they cannot name the file.
std::string _KXPathForPlainC(std::string_view path);
/// The library's text for a path that such a library gives.
std::string _KXTextOfPlainC(std::string_view path);
/// Whether a letter stands between the parts of a path.
bool _KXIsSlash(char letter);
