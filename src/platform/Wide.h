#pragma once

#include <string>
#include <string_view>

// On Windows texts of the system are UTF-16; the library's are UTF-8. What is neither becomes U+FFFD, so that
// no name can end the program.

std::wstring _KXWide(std::string_view text);
std::string _KXNarrow(std::wstring_view text);

/// A path as the system's calls take it, however long it is; one that they refuse where no file can have it.
std::wstring _KXWidePath(std::string_view path);
/// The same, for a folder below which paths grow longer still.
std::wstring _KXWideFolder(std::string_view path);
/// The other way round: with slashes, and short again.
std::string _KXNarrowPath(std::wstring_view path);
