#pragma once

#include <cstdio>

// What was put on a stream goes to the system, and what was read from it stays where it was; 0 on success.
// And single bytes through the calls that take no lock, where the system has them.
#ifdef _WIN32
// There fflush() forgets what was read ahead.
inline int _KXFlush(std::FILE* file) {
    const auto position = _ftelli64(file);
    if (std::fflush(file) != 0)
        return EOF;
    return position < 0 || _ftelli64(file) == position ? 0 : _fseeki64(file, position, SEEK_SET);
}
inline int _KXPutByte(int byte, std::FILE* file) { return std::putc(byte, file); }
inline int _KXGetByte(std::FILE* file) { return std::getc(file); }
#else
inline int _KXFlush(std::FILE* file) { return std::fflush(file); }
inline int _KXPutByte(int byte, std::FILE* file) { return putc_unlocked(byte, file); }
inline int _KXGetByte(std::FILE* file) { return getc_unlocked(file); }
#endif
