#pragma once

#include <string>
#include <string_view>
#include <system_error>

// What nothing can be called on Windows. The system would refuse such a name, open a device by it, drop a
// part of it, or make a file that few programs can remove again, so the library never hands it over. Nothing
// here asks the system; paths are UTF-8. Those that begin with "//./" or "//?/" are the system's own
// business.

/// Why no file can have a path; none where one can.
std::error_code _KXFaultOfWindowsPath(std::string_view path);

/// The path with a `|` before each impossible name: the system refuses it, whatever is joined to it, and its
/// text is not lost.
std::string _KXMarkWindowsPath(std::string_view path);
/// The other way round, with slashes.
std::string _KXUnmarkWindowsPath(std::string path);
