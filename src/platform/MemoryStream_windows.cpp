#include "platform/MemoryStream.h"

#include <cstdlib>
#include <utility>

#include <windows.h>

// The C library has no stream into memory: this one is a file that the system keeps there as long as it can,
// and removes when it is closed, whatever becomes of the program.
static std::FILE* openIn(const wchar_t* folder) {
    wchar_t path[MAX_PATH + 1];
    return folder && GetTempFileNameW(folder, L"kx", 0, path) ? _wfopen(path, L"w+bTDN") : nullptr;
}

// The folder for such files need not be there; any other that can be written to will do.
static std::FILE* openTemporary() {
    wchar_t temporary[MAX_PATH + 1];
    std::FILE* file = GetTempPathW(MAX_PATH + 1, temporary) ? openIn(temporary) : nullptr;
    for (const wchar_t* const folder : {static_cast<const wchar_t*>(_wgetenv(L"LOCALAPPDATA")), L"."})
        if (!file)
            file = openIn(folder);
    return file;
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
