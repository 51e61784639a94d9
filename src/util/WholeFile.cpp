#include "util/WholeFile.h"

#include "core/ground/ErrorSlot.h"
#include "platform/FileContent.h"
#include "platform/FilePath.h"
#include "platform/OpenFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

static bool report(const char* path, const char* why) {
    _KXReportError("%s: %s", path ? path : "no path", why);
    return false;
}

std::string _KXPathFaultText(const char* path) {
    const std::error_code fault = _KXPathFault(path ? path : "");
    return fault ? ": " + fault.message() : "";
}

bool _KXReadWholeFile(const char* path, std::size_t maximum, std::string& content) {
    const File file(path ? _KXOpenFile(path, "rb") : nullptr, std::fclose);
    if (!file)
        return report(path, ("cannot be opened" + _KXPathFaultText(path)).c_str());
    std::size_t length = 0;
    do {
        content.resize(std::min(maximum + 1, 2 * length + 4096)); // a byte more tells that there are more
        length += std::fread(content.data() + length, 1, content.size() - length, file.get());
    } while (length == content.size() && length <= maximum);
    content.resize(length);
    if (std::ferror(file.get()))
        return report(path, "cannot be read");
    return content.size() <= maximum || report(path, "is too large");
}

// Where a link leads to, also where nothing is yet: so the link stays.
static fs::path targetOf(fs::path path, std::error_code& error) {
    constexpr int mostLinks = 40; // as many as systems follow
    std::error_code ignored;
    for (int links = 0; fs::is_symlink(path, ignored); ++links) {
        if (links == mostLinks) {
            error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
            return path;
        }
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

std::error_code _KXStoreFile(const char* path, std::string_view content) {
    if (!path || !*path)
        return std::make_error_code(std::errc::no_such_file_or_directory);
    std::error_code error = _KXPathFault(path), ignored;
    if (error)
        return error;
    const fs::file_status status = fs::status(_KXFilePath(path), ignored);
    if (fs::exists(status) && (!fs::is_regular_file(status) || _KXIsOutputOfProcess(path)))
        return _KXWriteInPlace(path, content);
    const fs::path target = targetOf(_KXFilePath(path), error);
    return error ? error : _KXExchangeFile(_KXTextOf(target), content);
}

bool _KXReplaceFile(const char* path, std::string_view content) {
    const std::error_code error = _KXStoreFile(path, content);
    return !error || report(path, ("cannot be written: " + error.message()).c_str());
}
