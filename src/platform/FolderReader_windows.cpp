#include "platform/FolderReader.h"

#include "platform/Wide.h"

#include <cerrno>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

#include <windows.h>

struct _KXFolderReader::Folder {
    HANDLE search;
    WIN32_FIND_DATAW entry;
    bool isFresh; ///< The entry has not been handed out yet.
    std::string name;
};

static int numberOf(DWORD error) {
    if (error == ERROR_DIRECTORY)
        return ENOTDIR;
    const std::error_condition condition =
        std::error_code(static_cast<int>(error), std::system_category()).default_error_condition();
    return condition.category() == std::generic_category() ? condition.value() : EIO;
}

void _KXFolderReader::Close::operator()(Folder* folder) const {
    FindClose(folder->search);
    delete folder;
}

_KXFolderReader::_KXFolderReader(const char* path) : _error(0) {
    const std::wstring wide = _KXWidePath(path);
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (wide.empty() || attributes == INVALID_FILE_ATTRIBUTES ||
        (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        _error = numberOf(wide.empty()                            ? ERROR_PATH_NOT_FOUND
                          : attributes == INVALID_FILE_ATTRIBUTES ? GetLastError()
                                                                  : ERROR_DIRECTORY);
        return;
    }
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileExW((wide + L"\\*").c_str(), FindExInfoBasic, &entry,
                                           FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE) // a disk's uppermost folder may hold nothing at all
        _error = GetLastError() == ERROR_FILE_NOT_FOUND ? 0 : numberOf(GetLastError());
    else
        _folder.reset(new Folder{search, entry, true, {}});
}

_KXFolderReader::~_KXFolderReader() = default;

const char* _KXFolderReader::next() {
    while (_folder) {
        if (!_folder->isFresh && !FindNextFileW(_folder->search, &_folder->entry)) {
            _error = GetLastError() == ERROR_NO_MORE_FILES ? 0 : numberOf(GetLastError());
            return nullptr;
        }
        _folder->isFresh = false;
        const std::wstring_view name = _folder->entry.cFileName;
        if (name != L"." && name != L"..") {
            _folder->name = _KXNarrow(name);
            return _folder->name.c_str();
        }
    }
    return nullptr;
}
