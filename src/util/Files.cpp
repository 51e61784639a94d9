#include <Kobaltrix/KXFile.h>

#include "core/ground/ErrorSlot.h"

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

// A folder that is being emptied. Names are taken down before the first removal, because a folder that
// changes while it is read may skip entries.
struct FolderToEmpty {
    Folder folder;
    std::vector<std::string> names;
    bool removedSomething = false;
};
} // namespace

static std::vector<std::string> namesIn(DIR* folder) {
    std::vector<std::string> names;
    while (const dirent* entry = readdir(folder))
        names.emplace_back(entry->d_name);
    return names;
}

// Opens @a name within @a parent, but not through a symbolic link.
static Folder openWithoutFollowing(int parent, const char* name) {
    const int descriptor = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    Folder folder(fdopendir(descriptor));
    if (!folder)
        close(descriptor);
    return folder;
}

static FolderToEmpty folderToEmpty(Folder folder) {
    std::vector<std::string> names = namesIn(folder.get());
    std::erase_if(names, [](const std::string& name) { return name == "." || name == ".."; });
    return {std::move(folder), std::move(names)};
}

// Removes everything in a folder; true when anything went. It walks by open folder and bare name, so that no
// path grows too long on the way down and nobody can slip a link into the middle of one; and it keeps its own
// stack, so that a deep tree costs memory and not the program.
static bool emptyFolder(Folder root) {
    std::vector<FolderToEmpty> levels;
    levels.push_back(folderToEmpty(std::move(root)));
    for (;;) {
        FolderToEmpty& level = levels.back();
        if (level.names.empty()) {
            const bool removedInside = level.removedSomething;
            levels.pop_back();
            if (levels.empty())
                return removedInside;
            FolderToEmpty& parent = levels.back();
            const int parentDescriptor = dirfd(parent.folder.get());
            const bool removed = unlinkat(parentDescriptor, parent.names.back().c_str(), AT_REMOVEDIR) == 0;
            parent.removedSomething |= removed || removedInside;
            parent.names.pop_back();
            continue;
        }
        const int descriptor = dirfd(level.folder.get());
        const char* name = level.names.back().c_str();
        if (Folder inner = openWithoutFollowing(descriptor, name)) {
            levels.push_back(folderToEmpty(std::move(inner)));
            continue;
        }
        // A folder that may not be read can still be removed when it is empty.
        level.removedSomething |=
            unlinkat(descriptor, name, 0) == 0 || unlinkat(descriptor, name, AT_REMOVEDIR) == 0;
        level.names.pop_back();
    }
}

int KXFileExists(const char* path) {
    struct stat information;
    return path && stat(path, &information) == 0 ? -1 : 0;
}

int KXIsDirectory(const char* path) { return path && Folder(opendir(path)) ? -1 : 0; }

int KXRemoveFile(const char* path) { return KXFileExists(path) && unlink(path) == 0 ? 0 : -1; }

int KXRemoveDirectory(const char* path) {
    if (!KXFileExists(path))
        return -1;
    // A trailing slash would lead through a symbolic link.
    std::string root = path;
    while (root.size() > 1 && root.back() == '/')
        root.pop_back();
    struct stat information;
    if (lstat(root.c_str(), &information) == 0 && S_ISLNK(information.st_mode))
        return KXIsDirectory(root.c_str()) && unlink(root.c_str()) == 0 ? 0 : -1;
    Folder folder = openWithoutFollowing(AT_FDCWD, root.c_str());
    const bool removedInside = folder && emptyFolder(std::move(folder));
    return rmdir(root.c_str()) == 0 || removedInside ? 0 : -1;
}

std::list<char*> KXDirectoryContents(const char* path) {
    std::list<char*> contents;
    const Folder folder(path ? opendir(path) : nullptr);
    if (!folder)
        return contents;
    std::vector<std::string> names = namesIn(folder.get());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    const bool endsWithSlash = std::string_view(path).ends_with('/');
    for (const std::string& name : names)
        if (char* full = KXTempString(endsWithSlash ? "%s%s" : "%s/%s", path, name.c_str()))
            contents.push_back(full);
    return contents;
}

int KXMakeDirectory(const char* path) {
    if (KXFileExists(path)) {
        _KXReportError("File exists at %s", path);
        return 0;
    }
    if (path && mkdir(path, 0777) == 0)
        return -1;
    _KXReportError("Unable to create directory at %s", path ? path : "(null)");
    return 0;
}

char* KXGetFilename(const char* path) {
    if (!path)
        return nullptr;
    const char* slash = std::strrchr(path, '/');
    if (!slash)
        return strdup(path);
    return slash[1] ? strdup(slash + 1) : nullptr;
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
    if (!path)
        return nullptr;
    std::string_view rest = path;
    if (rest.ends_with('/'))
        rest.remove_suffix(1);
    const std::size_t slash = rest.rfind('/');
    return slash == std::string_view::npos ? nullptr : strndup(path, slash + 1);
}

char* KXGetExtension(const char* path) {
    const char* dot = path ? std::strrchr(path, '.') : nullptr;
    return dot && dot[1] ? strdup(dot + 1) : nullptr;
}
