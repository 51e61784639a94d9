#include "platform/OpenFile.h"

std::FILE* _KXOpenFile(const char* path, const char* mode) { return std::fopen(path, mode); }
