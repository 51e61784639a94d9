#include "platform/EmptyFolder.h"
#include "platform/Wide.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <windows.h>

namespace {
// A folder that is being emptied. Names are taken down before the first removal, because a folder that
// changes while it is read may skip entries.
struct FolderToEmpty {
    std::wstring path;
    std::vector<std::pair<std::wstring, DWORD>> entries; ///< Names and attributes.
    bool removedSomething = false;
};
} // namespace

static bool leadsElsewhere(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
static bool isFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

static FolderToEmpty folderToEmpty(std::wstring path) {
    FolderToEmpty folder = {std::move(path), {}};
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileExW((folder.path + L"\\*").c_str(), FindExInfoBasic, &entry,
                                           FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE)
        return folder;
    do
        if (const std::wstring_view name = entry.cFileName; name != L"." && name != L"..")
            folder.entries.emplace_back(name, entry.dwFileAttributes);
    while (FindNextFileW(search, &entry));
    FindClose(search);
    return folder;
}

static bool removed(const std::wstring& path, DWORD attributes) {
    const auto remove = isFolder(attributes) ? RemoveDirectoryW : DeleteFileW;
    if (remove(path.c_str()))
        return true;
    // Elsewhere a file that may not be written may be removed all the same.
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 &&
           SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL) && remove(path.c_str());
}

// It keeps its own stack, so that a deep tree costs memory and not the program.
bool _KXEmptyFolder(const char* path) {
    std::wstring root = _KXWideFolder(path);
    const DWORD attributes = GetFileAttributesW(root.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !isFolder(attributes) || leadsElsewhere(attributes))
        return false;
    std::vector<FolderToEmpty> levels;
    levels.push_back(folderToEmpty(std::move(root)));
    for (;;) {
        FolderToEmpty& level = levels.back();
        if (level.entries.empty()) {
            const bool removedInside = level.removedSomething;
            const std::wstring emptied = std::move(level.path);
            levels.pop_back();
            if (levels.empty())
                return removedInside;
            levels.back().removedSomething |=
                removed(emptied, levels.back().entries.back().second) || removedInside;
            levels.back().entries.pop_back();
            continue;
        }
        const auto& [name, kind] = level.entries.back();
        std::wstring inner = level.path + L'\\' + name;
        if (isFolder(kind) && !leadsElsewhere(kind)) {
            levels.push_back(folderToEmpty(std::move(inner)));
            continue;
        }
        level.removedSomething |= removed(inner, kind);
        level.entries.pop_back();
    }
}
