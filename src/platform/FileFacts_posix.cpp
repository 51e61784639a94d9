#include "platform/FileFacts.h"

#include <sys/stat.h>

_KXFileFacts _KXFactsOfFile(const char* path) {
    struct stat facts = {};
    if (stat(path, &facts) != 0)
        return {};
    return {static_cast<std::uint64_t>(facts.st_size), facts.st_mtime};
}

bool _KXNameIsTaken(const char* path) {
    struct stat ignored = {};
    return lstat(path, &ignored) == 0;
}
