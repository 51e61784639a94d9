#pragma once

#include <cstdio>

/// std::fopen() for a path in UTF-8, of a file that programs started by the game do not inherit.
std::FILE* _KXOpenFile(const char* path, const char* mode);
