#include "platform/EmptyFolder.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
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

bool _KXEmptyFolder(const char* path) {
    Folder root = openWithoutFollowing(AT_FDCWD, path);
    return root && emptyFolder(std::move(root));
}
