#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

/// A stream whose content is kept, for code that writes to a FILE.
class _KXMemoryStream {
public:
    _KXMemoryStream();
    ~_KXMemoryStream();
    _KXMemoryStream(const _KXMemoryStream&) = delete;
    _KXMemoryStream& operator=(const _KXMemoryStream&) = delete;

    /// Null if it could not be opened, or after its end.
    std::FILE* get() const { return _stream; }
    /// Ends the stream. What was put on it, which lasts as long as this; none if it is not all there.
    std::optional<std::string_view> finish();

private:
    std::FILE* _stream;
    char* _content = nullptr;
    std::size_t _size = 0;
};
