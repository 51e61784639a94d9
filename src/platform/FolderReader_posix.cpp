#include "platform/FolderReader.h"

#include <cerrno>
#include <string_view>

#include <dirent.h>

static DIR* systemsOwn(void* folder) { return static_cast<DIR*>(folder); }

void _KXFolderReader::Close::operator()(Folder* folder) const { closedir(systemsOwn(folder)); }

_KXFolderReader::_KXFolderReader(const char* path)
    : _folder(static_cast<Folder*>(static_cast<void*>(opendir(path)))), _error(_folder ? 0 : errno) {}

_KXFolderReader::~_KXFolderReader() = default;

const char* _KXFolderReader::next() {
    while (_folder) {
        errno = 0; // the end and a failure look alike
        const dirent* const entry = readdir(systemsOwn(_folder.get()));
        if (!entry) {
            _error = errno;
            return nullptr;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            return entry->d_name;
    }
    return nullptr;
}
