#include "render/ImageFile.h"

#include "util/WholeFile.h"

#include <SDL_error.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {
// What an encoder writes. It is called from C, through which no exception may pass.
class Memory {
public:
    Memory() {
        if (!_stream)
            return;
        _stream->type = SDL_RWOPS_UNKNOWN;
        _stream->hidden.unknown.data1 = this;
        _stream->size = [](SDL_RWops* stream) { return of(stream).size(); };
        _stream->seek = [](SDL_RWops* stream, Sint64 offset, int from) {
            return of(stream).seek(offset, from);
        };
        _stream->read = [](SDL_RWops*, void*, std::size_t, std::size_t) { return std::size_t{0}; };
        _stream->write = [](SDL_RWops* stream, const void* data, std::size_t size, std::size_t count) {
            return of(stream).write(data, size * count) ? count : 0;
        };
        _stream->close = [](SDL_RWops*) { return 0; };
    }
    ~Memory() { SDL_FreeRW(_stream); }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    SDL_RWops* stream() const { return _stream; }
    const std::string& bytes() const { return _bytes; }
    /// Encoders do not ask at every write whether it went well.
    bool isExhausted() const { return _exhausted; }

private:
    static Memory& of(SDL_RWops* stream) { return *static_cast<Memory*>(stream->hidden.unknown.data1); }

    Sint64 size() const { return static_cast<Sint64>(_bytes.size()); }
    Sint64 seek(Sint64 offset, int from) {
        const Sint64 start = from == RW_SEEK_SET   ? 0
                             : from == RW_SEEK_CUR ? static_cast<Sint64>(_at)
                                                   : size();
        _at = static_cast<std::size_t>(std::clamp(start + offset, Sint64{0}, size()));
        return static_cast<Sint64>(_at);
    }
    bool write(const void* data, std::size_t count) {
        try {
            _bytes.resize(std::max(_bytes.size(), _at + count));
        } catch (const std::bad_alloc&) {
            _exhausted = true;
            return false;
        }
        std::memcpy(_bytes.data() + _at, data, count);
        _at += count;
        return true;
    }

    std::string _bytes;
    std::size_t _at = 0;
    bool _exhausted = false;
    SDL_RWops* const _stream = SDL_AllocRW();
};
} // namespace

bool _KXStoreImage(const char* path, SDL_Surface& picture, int (*encode)(SDL_Surface*, SDL_RWops*, int),
                   std::string& reason) {
    Memory memory;
    const bool encoded = memory.stream() && encode(&picture, memory.stream(), 0) == 0;
    if (!encoded && !memory.isExhausted()) {
        reason = SDL_GetError();
        return false;
    }
    const std::error_code error = memory.isExhausted() ? std::make_error_code(std::errc::not_enough_memory)
                                                       : _KXStoreFile(path, memory.bytes());
    if (error)
        reason = error.message();
    return !error;
}
