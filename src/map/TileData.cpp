#include "map/TileData.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include <zlib.h>
#include <zstd.h>

namespace {
class Plain final : public _KXTileBytes {
public:
    explicit Plain(const std::string& bytes) : _bytes(bytes) {}
    bool read(void* block, std::size_t size) override {
        if (size > _bytes.size() - _at)
            return false;
        std::copy_n(_bytes.data() + _at, size, static_cast<char*>(block));
        _at += size;
        return true;
    }

private:
    const std::string& _bytes;
    std::size_t _at = 0;

    bool isBroken() const override { return _at < _bytes.size(); }
};

class Inflated final : public _KXTileBytes {
public:
    /// @param window what zlib takes: 15 for its own format, 16 more for gzip.
    Inflated(const std::string& bytes, int window) : _rest(bytes.size()) {
        _stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        if (inflateInit2(&_stream, window) != Z_OK)
            throw std::bad_alloc();
    }
    ~Inflated() override { inflateEnd(&_stream); }
    Inflated(const Inflated&) = delete;
    Inflated& operator=(const Inflated&) = delete;

    bool read(void* block, std::size_t size) override {
        auto* to = static_cast<Bytef*>(block);
        while (size > 0) {
            if (_status != Z_OK)
                return false;
            const std::size_t in = std::min(_rest, most), out = std::min(size, most);
            _stream.avail_in = static_cast<uInt>(in);
            _stream.next_out = to;
            _stream.avail_out = static_cast<uInt>(out);
            _status = inflate(&_stream, Z_NO_FLUSH);
            const std::size_t given = out - _stream.avail_out;
            _rest -= in - _stream.avail_in;
            to += given;
            size -= given;
        }
        return true;
    }

private:
    static constexpr std::size_t most = 1U << 30;
    z_stream _stream = {};
    std::size_t _rest;
    int _status = Z_OK;

    bool isBroken() const override { return _status != Z_STREAM_END || _rest > 0; }
};

class Zstd final : public _KXTileBytes {
public:
    explicit Zstd(const std::string& bytes) : _input{bytes.data(), bytes.size(), 0} {
        if (!_stream)
            throw std::bad_alloc();
    }
    bool read(void* block, std::size_t size) override {
        ZSTD_outBuffer output = {block, size, 0};
        while (output.pos < size) {
            if (_isBroken || _isDone)
                return false;
            const std::size_t in = _input.pos, out = output.pos;
            const std::size_t hint = ZSTD_decompressStream(_stream.get(), &output, &_input);
            _isBroken = ZSTD_isError(hint) || (hint > 0 && _input.pos == in && output.pos == out);
            _isDone = hint == 0;
        }
        return true;
    }

private:
    struct Free {
        void operator()(ZSTD_DStream* stream) const { ZSTD_freeDStream(stream); }
    };
    const std::unique_ptr<ZSTD_DStream, Free> _stream{ZSTD_createDStream()};
    ZSTD_inBuffer _input;
    bool _isBroken = false, _isDone = false;

    bool isBroken() const override { return !_isDone || _input.pos < _input.size; }
};

int valueOf(char letter) {
    if (letter >= 'A' && letter <= 'Z')
        return letter - 'A';
    if (letter >= 'a' && letter <= 'z')
        return letter - 'a' + 26;
    if (letter >= '0' && letter <= '9')
        return letter - '0' + 52;
    return letter == '+' ? 62 : letter == '/' ? 63 : -1;
}
} // namespace

bool _KXDecodeBase64(const std::string& text, std::string& bytes) {
    unsigned bits = 0;
    int letters = 0, ends = 0;
    bytes.clear();
    bytes.reserve(text.size() / 4 * 3);
    for (const char letter : text) {
        if (std::strchr(" \t\r\n", letter) && letter)
            continue;
        const int value = letter == '=' ? 0 : valueOf(letter);
        ends += letter == '=';
        if (value < 0 || (ends > 0 && letter != '='))
            return false;
        bits = bits << 6 | static_cast<unsigned>(value);
        if (++letters % 4 == 0)
            for (const int shift : {16, 8, 0})
                bytes += static_cast<char>(bits >> shift & 255U);
    }
    if (letters % 4 != 0 || ends > 2)
        return false;
    bytes.resize(bytes.size() - static_cast<std::size_t>(ends));
    return true;
}

std::unique_ptr<_KXTileBytes> _KXUnpackTiles(const std::string& compression, const std::string& bytes) {
    if (compression.empty())
        return std::make_unique<Plain>(bytes);
    if (compression == "zlib")
        return std::make_unique<Inflated>(bytes, 15);
    if (compression == "gzip")
        return std::make_unique<Inflated>(bytes, 15 + 16);
    return compression == "zstd" ? std::make_unique<Zstd>(bytes) : nullptr;
}
