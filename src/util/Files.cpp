#include <Kobaltrix/KXFile.h>

#include "core/ground/ErrorSlot.h"
#include "platform/EmptyFolder.h"
#include "platform/FilePath.h"
#include "platform/FolderReader.h"
#include "platform/OpenFile.h"
#include "util/KXString.h"
#include "util/WholeFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

int KXFileExists(const char* path) {
    std::error_code error;
    return path && fs::exists(_KXFilePath(path), error) ? -1 : 0;
}

int KXIsDirectory(const char* path) { return _KXFolderReader(path ? path : "").error() ? 0 : -1; }

// One that fopen() does not know ends the program on some systems.
static bool isMode(const std::string_view mode) {
    return mode.find_first_of("rwa") == 0 &&
           std::ranges::count(std::array{"", "b", "+", "b+", "+b"}, mode.substr(1)) == 1;
}

FILE* KXOpenFile(const char* path, const char* mode) {
    if (!mode || !isMode(mode)) {
        _KXReportError("There is no mode \"%s\" to open a file in", mode ? mode : "(null)");
        return nullptr;
    }
    FILE* const file = path ? _KXOpenFile(path, mode) : nullptr;
    const int error = path ? errno : ENOENT;
    if (!file) {
        const std::string fault = _KXPathFaultText(path);
        _KXReportError("Unable to open %s%s", path ? path : "(null)",
                       fault.empty() ? (": " + std::generic_category().message(error)).c_str()
                                     : fault.c_str());
        errno = error;
    }
    return file;
}

int KXRemoveFile(const char* path) {
    if (!KXFileExists(path))
        return -1;
    std::error_code error;
    const fs::path file = _KXFilePath(path);
    return !fs::is_directory(fs::symlink_status(file, error)) && fs::remove(file, error) ? 0 : -1;
}

int KXRemoveDirectory(const char* path) {
    if (!KXFileExists(path))
        return -1;
    // A trailing slash would lead through a symbolic link.
    std::string root = path;
    while (root.size() > 1 && root.back() == '/')
        root.pop_back();
    std::error_code error;
    const fs::file_type type = fs::symlink_status(_KXFilePath(root), error).type();
    if (type == fs::file_type::symlink)
        return KXIsDirectory(root.c_str()) && fs::remove(_KXFilePath(root), error) ? 0 : -1;
    if (type != fs::file_type::directory)
        return -1;
    const bool removedInside = _KXEmptyFolder(root.c_str());
    return fs::remove(_KXFilePath(root), error) || removedInside ? 0 : -1;
}

std::list<char*> KXDirectoryContents(const char* path) {
    std::list<char*> contents;
    _KXFolderReader folder(path ? path : "");
    if (folder.error())
        return contents;
    std::set<std::string> names = {".", ".."};
    while (const char* name = folder.next())
        names.insert(name);
    const bool endsWithSlash = std::string_view(path).ends_with('/');
    for (const std::string& name : names) {
        contents.push_back(KXTempString(endsWithSlash ? "%s%s" : "%s/%s", path, name.c_str()));
        if (!contents.back()) // a list without it would pass for whole
            throw std::bad_alloc();
    }
    return contents;
}

int KXMakeDirectory(const char* path) {
    if (KXFileExists(path)) {
        _KXReportError("File exists at %s", path);
        return 0;
    }
    std::error_code error;
    if (path && fs::create_directory(_KXFilePath(path), error))
        return -1;
    _KXReportError("Unable to create directory at %s%s", path ? path : "(null)",
                   _KXPathFaultText(path).c_str());
    return 0;
}

char* KXGetFilename(const char* path) {
    const std::string_view text = path ? path : "/";
    const std::size_t begin = text.rfind('/') + 1; // 0 without one
    return text.ends_with('/') ? nullptr : _KXCopyForCaller(text.substr(begin));
}

const char* KXAppendPath(const char* a, const char* b) {
    if (!a || !b)
        return nullptr;
    const bool endsWithSlash = std::string_view(a).ends_with('/');
    const bool beginsWithSlash = b[0] == '/';
    if (endsWithSlash && beginsWithSlash)
        return KXTempString("%s%s", a, b + 1);
    return KXTempString(endsWithSlash || beginsWithSlash ? "%s%s" : "%s/%s", a, b);
}

char* KXGetContainingPathOf(const char* path) {
    std::string_view rest = path ? path : "";
    if (rest.ends_with('/'))
        rest.remove_suffix(1);
    const std::size_t slash = rest.rfind('/');
    return slash == std::string_view::npos ? nullptr : _KXCopyForCaller(rest.substr(0, slash + 1));
}

char* KXGetExtension(const char* path) {
    const std::string_view text = path ? path : "";
    const std::size_t dot = text.rfind('.');
    return dot == std::string_view::npos || text.ends_with('.') ? nullptr
                                                                : _KXCopyForCaller(text.substr(dot + 1));
}
