#pragma once

#include <cstdio>

// Single bytes through the calls that take no lock, where the system has them.
#ifdef _WIN32
inline int _KXPutByte(int byte, std::FILE* file) { return std::putc(byte, file); }
inline int _KXGetByte(std::FILE* file) { return std::getc(file); }
#else
inline int _KXPutByte(int byte, std::FILE* file) { return putc_unlocked(byte, file); }
inline int _KXGetByte(std::FILE* file) { return getc_unlocked(file); }
#endif
