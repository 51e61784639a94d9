#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

/// What an error's text ends with where no file of this system can have such a path: ": " and why. Else
/// empty.
std::string _KXPathFaultText(const char* path);

/// Reads a file to its end. False, with a text in the error slot, if it cannot be read or has more than @a
/// maximum bytes.
bool _KXReadWholeFile(const char* path, std::size_t maximum, std::string& content);

/// Gives a file a new content, all of it or, when that fails, none; it is on the disk before this returns.
///
/// The content is written into a file beside it, which then takes its place, and its permissions if there was
/// one. A process that is killed meanwhile leaves the old file, and the other beside it (".saving-…"). Of a
/// symbolic link the file changes that it leads to. A device, a pipe and what the process's own output goes
/// to are written to as they are.
/// @return why it failed.
std::error_code _KXStoreFile(const char* path, std::string_view content);
/// The same. False, with a text in the error slot, if it fails.
bool _KXReplaceFile(const char* path, std::string_view content);
