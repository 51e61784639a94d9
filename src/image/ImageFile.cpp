#include "image/ImageFile.h"

#include "platform/FilePath.h"
#include "platform/MemoryBudget.h"
#include "util/WholeFile.h"

#include <Kobaltrix/KXImage.h>

#include <SDL_error.h>
#include <SDL_image.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <limits>
#include <new>
#include <system_error>
#include <utility>

static constinit std::atomic<std::uint32_t> maximumPixels = 1U << 27;

void KXSetMaximumImagePixels(std::uint32_t pixels) { maximumPixels = pixels; }

std::uint32_t _KXMaximumImagePixels() { return maximumPixels; }

// Decoding may take four bytes a pixel, and the file itself in whatever form.
template<class Decode>
static _KXDecodedImage decoded(std::uintmax_t fileSize, const Decode& decode) {
    constexpr std::size_t more = 1 << 20;
    const std::uint32_t most = maximumPixels;
    const auto file = static_cast<std::size_t>(std::min(fileSize, std::uintmax_t{1} << 40));
    const _KXMemoryBudget budget(4 * std::size_t{most} + 16 * file + more);
    _KXSurface surface(decode());
    const std::uint64_t pixels = surface ? std::uint64_t(surface->w) * std::uint64_t(surface->h) : 0;
    if (surface ? pixels <= most : !budget.exceeded())
        return {std::move(surface), false};
    return {nullptr, true};
}

// The decoder of layered drawings (XCF) believes all that it reads, so files of a stranger could crash it.
static SDL_Surface* load(SDL_RWops* stream, const char* type) {
    if (!stream)
        return nullptr;
    if (!IMG_isXCF(stream))
        return IMG_LoadTyped_RW(stream, 1, type);
    SDL_RWclose(stream);
    SDL_SetError("a drawing of layers; export it as PNG");
    return nullptr;
}

_KXDecodedImage _KXDecodeImageFile(const char* path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(_KXFilePath(path ? path : ""), error);
    return decoded(error ? 0 : size, [path] {
        const char* const dot = std::strrchr(path, '.');
        return load(SDL_RWFromFile(_KXPathForLibraries(path).c_str(), "rb"), dot ? dot + 1 : nullptr);
    });
}

_KXDecodedImage _KXDecodeImage(const void* bytes, std::size_t size) {
    if (size > std::size_t{std::numeric_limits<int>::max()}) {
        SDL_SetError("too many bytes");
        return {nullptr, false};
    }
    return decoded(size, [=] { return load(SDL_RWFromConstMem(bytes, static_cast<int>(size)), nullptr); });
}

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
    std::string& bytes() { return _bytes; }
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

bool _KXEncodeImage(SDL_Surface& picture, int (*encode)(SDL_Surface*, SDL_RWops*, int), std::string& bytes,
                    std::string& reason) {
    Memory memory;
    const bool encoded = memory.stream() && encode(&picture, memory.stream(), 0) == 0;
    if (memory.isExhausted())
        reason = std::make_error_code(std::errc::not_enough_memory).message();
    else if (!encoded)
        reason = SDL_GetError();
    else
        bytes = std::move(memory.bytes());
    return encoded && !memory.isExhausted();
}

bool _KXStoreImage(const char* path, SDL_Surface& picture, int (*encode)(SDL_Surface*, SDL_RWops*, int),
                   std::string& reason) {
    std::string bytes;
    if (!_KXEncodeImage(picture, encode, bytes, reason))
        return false;
    const std::error_code error = _KXStoreFile(path, bytes);
    if (error)
        reason = error.message();
    return !error;
}
