#pragma once

#include <string>
#include <system_error>

/// Gives a file or a folder another name, on the same disk. A file that has that name is replaced.
/// @return why it failed.
std::error_code _KXRenameFile(const std::string& from, const std::string& to);
