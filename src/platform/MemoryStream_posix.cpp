#include "platform/MemoryStream.h"

#include <cstdlib>
#include <utility>

_KXMemoryStream::_KXMemoryStream() : _stream(open_memstream(&_content, &_size)) {}

_KXMemoryStream::~_KXMemoryStream() {
    if (_stream)
        std::fclose(_stream);
    std::free(_content);
}

std::optional<std::string_view> _KXMemoryStream::finish() {
    std::FILE* const open = std::exchange(_stream, nullptr);
    if (!open)
        return std::nullopt;
    const bool failed = std::ferror(open) != 0;
    return std::fclose(open) == 0 && !failed ? std::optional<std::string_view>({_content, _size})
                                             : std::nullopt;
}
