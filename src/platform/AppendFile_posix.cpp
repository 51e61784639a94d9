#include "platform/AppendFile.h"

#include <fcntl.h>
#include <unistd.h>

std::FILE* _KXOpenToAppend(const char* path, bool empties) {
    const int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | (empties ? O_TRUNC : 0);
    const int descriptor = open(path, flags, 0666);
    if (descriptor == -1)
        return nullptr;
    std::FILE* file = fdopen(descriptor, "a");
    if (!file)
        close(descriptor);
    return file;
}
