#include "platform/MemoryStream.h"

#include <cstdlib>
#include <utility>

#include <windows.h>

// The C library has no stream into memory: this one is a file that the system keeps there as long as it can,
// and removes when it is closed, whatever becomes of the program.
static std::FILE* openTemporary() {
    wchar_t folder[MAX_PATH + 1], path[MAX_PATH + 1];
    if (!GetTempPathW(MAX_PATH + 1, folder) || !GetTempFileNameW(folder, L"kx", 0, path))
        return nullptr;
    return _wfopen(path, L"w+bTDN");
}

_KXMemoryStream::_KXMemoryStream() : _stream(openTemporary()) {}

_KXMemoryStream::~_KXMemoryStream() {
    if (_stream)
        std::fclose(_stream);
    std::free(_content);
}

std::optional<std::string_view> _KXMemoryStream::finish() {
    std::FILE* const open = std::exchange(_stream, nullptr);
    if (!open)
        return std::nullopt;
    const bool isThere =
        std::fflush(open) == 0 && std::ferror(open) == 0 && _fseeki64(open, 0, SEEK_END) == 0;
    const long long size = isThere ? _ftelli64(open) : -1;
    if (size >= 0)
        _content = static_cast<char*>(std::malloc(static_cast<std::size_t>(size) + 1));
    std::rewind(open);
    if (_content)
        _size = std::fread(_content, 1, static_cast<std::size_t>(size), open);
    std::fclose(open);
    return _content && _size == static_cast<std::size_t>(size)
               ? std::optional<std::string_view>({_content, _size})
               : std::nullopt;
}
