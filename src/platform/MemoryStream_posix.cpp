#include "platform/MemoryStream.h"

std::FILE* _KXOpenMemory(char** content, std::size_t* size) { return open_memstream(content, size); }
