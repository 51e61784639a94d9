#include "platform/OpenFile.h"

#include <string>

std::FILE* _KXOpenFile(const char* path, const char* mode) {
    return std::fopen(path, (std::string(mode) + 'e').c_str());
}
