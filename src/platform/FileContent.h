#pragma once

#include <string>
#include <string_view>
#include <system_error>

/// Writes a new file into the folder of another, flushes it to the disk and puts it in the other's place.
///
/// Until then it is hidden, under a name that nothing had, links included. It gets the permissions of the
/// other, or of any new file if there is none. Where the other may not be written, this fails, and whatever
/// fails leaves the other as it was and nothing beside it.
std::error_code _KXExchangeFile(const std::string& path, std::string_view content);

/// Writes to what is there: a device or a pipe. A file is emptied first.
std::error_code _KXWriteInPlace(const std::string& path, std::string_view content);

/// Whether a path leads to where the process writes its output or its errors.
bool _KXIsOutputOfProcess(const std::string& path);
