#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Reads a file to its end. False, with a text in the error slot, if it cannot be read or has more than @a
/// maximum bytes.
bool _KXReadWholeFile(const char* path, std::size_t maximum, std::string& content);
/// Gives a file a new content, all of it or, when that fails, none: false, with a text in the error slot. Of
/// a symbolic link the file changes that it leads to.
bool _KXReplaceFile(const char* path, std::string_view content);
